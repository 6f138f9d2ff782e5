#pragma once

#include <memory>

#include "development/storage/Database.h"

namespace tavio::development {

// The folder of everything the development platform writes, ending with "\": the environment variable TAVIO_DEV_FOLDER
// (a Windows path), else TavioDevPlatform in the user's local folder. A relative path means the folder that was the current one at
// first use, whatever a host makes the current one later. What is missing of the path is made.
Text StorageFolder();

// A variable of the process's environment; empty if there is none.
Text Environment(const wchar_t* name);

// This thread's connection, shared while anybody holds it. The database is the one whose ODBC connection string is in
// the environment variable TAVIO_DEV_DATABASE, else a SQLite file platform.db in the storage folder. At first use its
// tables are made and filled with the seed.
std::shared_ptr<Database> OpenStorage();

// Reserves `count` identifiers of a series and answers the first. Only within a transaction.
std::int32_t ReserveIds(Database& database, const wchar_t* series, std::int32_t count = 1);

// The local time as stored: "2024-03-05 08:30:00.123".
Text NowText();

}  // namespace tavio::development
