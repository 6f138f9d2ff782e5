#pragma once

#include <concepts>
#include <cstdint>

namespace tavio {

// The lowest rights bit that `isFree` accepts, tried from bit 0 to bit 30 (the sign bit is no right); 0 if none is
// free. `isFree` asks the database, so it is called no more often than needed.
template <std::predicate<std::int32_t> IsFree>
constexpr std::int32_t FirstFreeRightMask(IsFree&& isFree) {
  for (int bit = 0; bit < 31; ++bit) {
    const std::int32_t mask = std::int32_t{1} << bit;
    if (isFree(mask)) return mask;
  }
  return 0;
}

}  // namespace tavio
