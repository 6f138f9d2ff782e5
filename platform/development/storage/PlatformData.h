#pragma once

#include "development/storage/Database.h"
#include "development/storage/PackageJson.h"

namespace tavio::development {

// The data of a platform as one JSON object: each of the tables of DataTables an array of rows, a row an object of its
// columns, a package as PackageJson.h writes it; beside them t_PlatformVersion, the version of the tables.

// Everything, as it is at one moment.
Json ExportData(Database& database);

// Replaces the rows of the tables that `data` names, all or nothing; the others stay. Collections of actions that hosts
// have loaded count as outdated afterwards. Raises Error, and stores nothing, for a table or column that there is not, a
// value that does not fit its column, data of newer tables, and what would contradict itself or what stays.
void ImportData(Database& database, const Json& data);

// Stores the seed in tables that are empty. Only within a transaction.
void FillData(Database& database);

// Brings the data back to the seed, and empties what was sent and logged.
void ResetData(Database& database);

// What the text says as JSON, with every failure in words.
Json ParseData(std::string_view text);
// The text of exported data, a row on a line.
std::string DataText(const Json& data);

}  // namespace tavio::development
