#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "foundation/Text.h"

// What a fuzz target is written with. A target consists of LLVMFuzzerTestOneInput, which takes its input apart by
// TextInput and requires what must hold of every input.

namespace tavio {

// Texts out of the fuzzer's bytes. A byte below 128 is a character of its own, so that the fuzzer finds the letters and
// signs that matter; above, it is the high byte of any 16-bit unit.
class TextInput {
 public:
  TextInput(const std::uint8_t* bytes, std::size_t count) noexcept : bytes_(bytes), end_(bytes + count) {}

  // The text up to the next zero byte, or all that is left.
  Text Next() {
    Text text;
    while (bytes_ != end_) {
      const unsigned unit = *bytes_++;
      if (unit == 0) break;
      const bool wide = unit >= 128 && bytes_ != end_;
      text.push_back(static_cast<Char>(wide ? unit << 8 | *bytes_++ : unit));
    }
    return text;
  }
  // One byte as a number; 0 at the end.
  std::uint8_t NextByte() noexcept { return bytes_ == end_ ? std::uint8_t{0} : *bytes_++; }

 private:
  const std::uint8_t* bytes_;
  const std::uint8_t* end_;
};

// Stops the fuzzer, which keeps the input that led here.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace tavio

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);
