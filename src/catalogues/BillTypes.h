#pragma once

#include <cstdint>
#include <limits>
#include <stdexcept>

namespace tavio {

// The bit of bill type `billType` (counted from 1) in a set of bill types: 2^(billType-1), rounded to a whole number,
// so that types below 1 are in no set. Throws std::overflow_error if the power, or the exponent itself, leaves the
// 32-bit range.
constexpr std::int32_t BillTypeMask(std::int32_t billType) {
  constexpr std::int32_t kHighest = 31;
  if (billType > kHighest || billType == std::numeric_limits<std::int32_t>::min())
    throw std::overflow_error("bill type");
  return billType < 1 ? 0 : std::int32_t{1} << (billType - 1);
}

}  // namespace tavio
