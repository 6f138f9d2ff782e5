#pragma once

#include <cstdint>

namespace tavio {

// The flags of FStatus, and how edits change them. Other flags are kept.
inline constexpr std::int32_t kStatusNew = 1;
inline constexpr std::int32_t kStatusModified = 2;
inline constexpr std::int32_t kStatusDeleted = 4;

// A flag that is not set is added and one that is set is taken away, so no status can overflow.
constexpr std::int32_t StatusAfterEdit(std::int32_t status) noexcept {
  return (status & ~kStatusDeleted) | kStatusModified;
}

constexpr std::int32_t StatusAfterRemoval(std::int32_t status) noexcept { return status | kStatusDeleted; }

constexpr bool IsDeleted(std::int32_t status) noexcept { return (status & kStatusDeleted) != 0; }

}  // namespace tavio
