#pragma once

#include "foundation/values/Value.h"

namespace tavio {

// Creates the "temp" folder beside the library if it is missing, makes it the current directory, and deletes its files;
// those that are open elsewhere stay. It holds one downloaded file at a time. Answers its path, without a trailing "\".
// Raises Error if the folder cannot be created or entered.
Text PrepareTemporaryFolder();

// Creates or overwrites the file with the bytes of an array of bytes: through ADODB.Stream if the machine has it,
// directly otherwise. Raises Error.
void WriteFileBytes(const Text& path, const Value& bytes);

// The two ways of WriteFileBytes. The first answers false if there is no ADODB.Stream, or one that saves no files.
bool WriteThroughStream(const Text& path, const Value& bytes);
void WriteDirectly(const Text& path, const Value& bytes);

}  // namespace tavio
