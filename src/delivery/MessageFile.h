#pragma once

#include <cstddef>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio {

// The temporary file through which a message becomes bytes. Its name is the library's folder, "temp", a number and
// ".tmp", in one: a file beside the library, not in a folder of its own. Failures raise Error if nothing else is
// said.
class MessageFile {
 public:
  // `number`: the sender's ID and a file number, digits side by side. The name carries them as the platform writes a
  // single-precision number of that value, which is usually in exponent notation ("1.639412E+09").
  explicit MessageFile(const Text& number);

  // Writes the text in the system's multi-byte code page, followed by a carriage return and a line feed.
  void WriteTempFile(TextView text) const;
  // In bytes. A failure is shown, and answers 0.
  std::int32_t GetTempFileSize() const noexcept;
  // The bytes at positions 0 to `last`; zero beyond the end of the file.
  std::vector<std::byte> ReadTempFile(std::int32_t last) const;
  void Delete() const;

 private:
  Text path_;
};

}  // namespace tavio
