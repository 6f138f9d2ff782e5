#pragma once

#include "development/storage/Database.h"

namespace tavio::development {

// Makes the tables of a database ready for use, each time in one transaction: a new database gets them and the seed,
// older tables are brought up to date in place. Safe if several processes meet one database at once. Raises Error for
// tables of a newer version, and for a database that cannot be read.
void PrepareTables(Database& database);

}  // namespace tavio::development
