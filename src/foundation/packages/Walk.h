#pragma once

#include <cstdint>
#include <limits>

#include "foundation/values/Error.h"

namespace tavio {

// The count of a walk whose position is a 16-bit number. More entries than it can count raise the overflow error before
// the first step; hosts rely on the limit being reported instead of on a walk that ends half-way.
inline std::int32_t CountedIn16Bits(std::int32_t count) {
  if (count > std::numeric_limits<std::int16_t>::max()) throw Error::Overflow();
  return count;
}

}  // namespace tavio
