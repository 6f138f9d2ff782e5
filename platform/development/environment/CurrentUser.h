#pragma once

#include <optional>

#include "development/storage/Database.h"

namespace tavio::development {

struct User {
  std::int32_t id;
  Text name;
};

// The user whose ID is in the environment variable TAVIO_DEV_USER, so that several people work on one database, each
// process as one of them; none if there is no such variable. Raises Error if that is not the ID of a user who may log
// in.
std::optional<User> ChosenUser(Database& database);

// Whom this process works as: the chosen user, else the one whom the shared properties name.
std::int32_t CurrentUserId(Database& database);

}  // namespace tavio::development
