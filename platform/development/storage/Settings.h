#pragma once

#include "development/storage/Database.h"
#include "foundation/packages/Dictionary.h"

namespace tavio::development {

inline constexpr std::int32_t kEverybody = 0;  // as the owner of settings

// The settings that `owner` has stored in a section under a name; empty if there are none.
Dictionary LoadProfile(Database& database, std::int32_t owner, const Text& section, const Text& name);

}  // namespace tavio::development
