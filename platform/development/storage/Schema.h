#pragma once

#include "development/storage/Database.h"

namespace tavio::development {

// Makes and fills the tables of a database that has none yet, in one transaction; safe if several processes meet an empty
// database at once.
void PrepareTables(Database& database);

}  // namespace tavio::development
