#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio::fuzz {

// Stops the fuzzer, which keeps the input that led here.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

// The bytes of one execution, read from the front. Behind the end there are zeros and empty texts.
class Input {
 public:
  explicit Input(std::span<const std::uint8_t> bytes) noexcept : bytes_(bytes) {}

  bool AtEnd() const noexcept { return bytes_.empty(); }

  std::uint8_t Byte() noexcept {
    if (AtEnd()) return 0;
    const auto byte = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return byte;
  }

  std::int32_t Int32() noexcept {
    std::uint32_t number = 0;
    for (int shift = 0; shift < 32; shift += 8) number |= std::uint32_t{Byte()} << shift;
    return static_cast<std::int32_t>(number);
  }

  // A byte below 128 is a character of its own, so that the fuzzer finds the letters and signs that matter; above, it
  // is the high byte of any 16-bit character.
  Text Rest() {
    Text text;
    while (!AtEnd()) text.push_back(Unit());
    return text;
  }

  // The text up to the next line feed.
  Text Line() {
    Text line;
    while (!AtEnd()) {
      const auto unit = Unit();
      if (unit == u'\n') break;
      line.push_back(unit);
    }
    return line;
  }

 private:
  Char Unit() noexcept {
    const unsigned first = Byte();
    return static_cast<Char>(first < 128 ? first : first << 8 | Byte());
  }

  std::span<const std::uint8_t> bytes_;
};

// Each holds one rule of the library against a model: the same rule as it is told, step by step and slow.
void CheckActionCodes(Input input);
void CheckActionStatus(Input input);
void CheckFirstFreeRightMask(Input input);
void CheckBillTypes(Input input);
void CheckScenarioOrder(Input input);
void CheckScenarioRings(Input input);
void CheckDecimalText(Input input);
void CheckPropsString(Input input);
void CheckMParse(Input input);
void CheckTemplate(Input input);
void CheckMailText(Input input);
void CheckAddressList(Input input);
void CheckAddressSplitting(Input input);
void CheckOrderedMap(Input input);

}  // namespace tavio::fuzz
