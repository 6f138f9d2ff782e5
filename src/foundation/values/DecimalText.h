#pragma once

#include <cstdint>
#include <limits>
#include <optional>

#include "foundation/values/Text.h"

namespace tavio {

// The number that a text of decimal digits, with or without a minus sign, stands for; none for any other text and
// beyond 32 bits. User IDs are read by the ten thousand, and nearly all of them are written so.
constexpr std::optional<std::int32_t> ReadDecimal(TextView text) noexcept {
  const bool negative = !text.empty() && text.front() == Char{'-'};
  if (negative) text.remove_prefix(1);
  constexpr std::size_t kMostDigits = 10;
  if (text.empty() || text.size() > kMostDigits) return std::nullopt;
  std::int64_t number = 0;
  for (const Char digit : text) {
    if (digit < Char{'0'} || digit > Char{'9'}) return std::nullopt;
    number = number * 10 + (digit - Char{'0'});
  }
  if (negative) number = -number;
  using Limits = std::numeric_limits<std::int32_t>;
  if (number < Limits::min() || number > Limits::max()) return std::nullopt;
  return static_cast<std::int32_t>(number);
}

}  // namespace tavio
