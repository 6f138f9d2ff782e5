#pragma once

#include <span>

#include "com/server/LateBound.h"

namespace tavio::companion {

// What is known of the platform's components that are called by name.

// All of them, by ProgID. Not among them: containers, the file system, streams, and the library's own classes.
std::span<const wchar_t* const> PlatformComponents() noexcept;

// Those that a preview must stand before: they send, print or store, or what they are asked tells who gets it.
std::span<const wchar_t* const> GuardedComponents() noexcept;

// Whether a call only reads, or sets what the object itself reads with. All others are kept from the platform in a dry
// run. `assigns`: whether it assigns a property.
bool OnlyReads(const wchar_t* progId, TextView member, bool assigns, const com::Arguments& arguments);

// What stands in for the answer of a call that is kept from the platform: success. What comes back by reference is
// written.
Value AnswerInstead(const wchar_t* progId, TextView member, const com::Arguments& arguments);

// The path that a dry run answers for a bill that it did not print.
inline constexpr wchar_t kPlaceholderPath[] = L"(dry run)\\bill.pdf";

bool EqualsName(TextView name, const wchar_t* other) noexcept;

inline constexpr wchar_t kLog[] = L"MorlaLogMsg.Log";

}  // namespace tavio::companion
