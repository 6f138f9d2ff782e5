#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "foundation/Text.h"

namespace tavio::vexo {

// A quick hash for the short keys of records: four characters at a time, the last four of them possibly twice.
inline std::uint32_t HashOf(TextView key) noexcept {
  constexpr std::size_t kStep = 4;
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;  // odd, without a pattern in its bits
  const auto mixed = [](std::uint64_t hash, const Char* text, std::size_t length) {
    std::uint64_t units = 0;
    std::memcpy(&units, text, length * sizeof(Char));
    hash = (hash ^ units) * kSpread;
    return hash ^ (hash >> 32);
  };
  std::uint64_t hash = key.size() * kSpread;
  if (key.empty()) return 0;
  if (key.size() < kStep) return static_cast<std::uint32_t>(mixed(hash, key.data(), key.size()));
  for (std::size_t i = 0; i + kStep < key.size(); i += kStep) hash = mixed(hash, key.data() + i, kStep);
  return static_cast<std::uint32_t>(mixed(hash, key.data() + key.size() - kStep, kStep));
}

}  // namespace tavio::vexo
