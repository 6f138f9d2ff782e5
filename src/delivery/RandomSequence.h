#pragma once

#include <cmath>
#include <cstdint>

namespace tavio {

// The platform's pseudo-random sequence of numbers from 0 to below 1. Nothing seeds it: every process starts alike, and
// so do the names of its temporary files.
class RandomSequence {
 public:
  double Next() noexcept {
    state_ = (state_ * 1140671485u + 12820163u) & 0xFFFFFFu;
    return static_cast<double>(state_) / 0x1000000;
  }
  // The whole number nearest to r * 20000 + 1 for the next number r, ties to even: from 1 to 20001.
  std::int16_t NextFileNumber() noexcept { return static_cast<std::int16_t>(std::nearbyint(Next() * 20000 + 1)); }

 private:
  std::uint32_t state_ = 327680;
};

}  // namespace tavio
