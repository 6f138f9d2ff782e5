#pragma once

#include "foundation/values/Value.h"

namespace tavio {

// The "temp" folder beside the library, which holds one downloaded file at a time. Making one creates the folder where
// it is missing, makes it the current directory, and deletes its files; those that are open elsewhere stay. Raises
// Error where the folder cannot be created or entered.
class TemporaryFolder {
 public:
  TemporaryFolder();

  // Without a trailing "\".
  const Text& Path() const noexcept { return path_; }

 private:
  void Empty() const;

  Text path_;
};

// Creates or overwrites the file with the bytes of an array of bytes: through ADODB.Stream where the machine has it,
// directly otherwise. Raises Error.
void WriteFileBytes(const Text& path, const Value& bytes);

// The two roads of WriteFileBytes. The first answers false where there is no ADODB.Stream, or one that saves no files.
bool WriteThroughStream(const Text& path, const Value& bytes);
void WriteDirectly(const Text& path, const Value& bytes);

}  // namespace tavio
