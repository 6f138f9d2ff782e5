#include "development/storage/Schema.h"

#include <windows.h>

#include "development/storage/PackageJson.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"

namespace tavio::development {
namespace {

std::string_view Embedded(const wchar_t* name) {
  const HMODULE module = OwnModule();
  const HRSRC found = FindResourceW(module, name, reinterpret_cast<LPCWSTR>(RT_RCDATA));
  if (!found) throw Error(E_FAIL, L"DevPlatform", Text(L"缺少资源 ") + name);
  const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module, found)));
  return {bytes, SizeofResource(module, found)};
}

bool HasTables(Database& database) {
  try {
    return !database.Query(L"SELECT FVersion FROM t_PlatformVersion").IsEmpty();
  } catch (const Error&) {  // no such table: each database has its own words for it
    return false;
  }
}

void MakeTables(Database& database) {
  const Text script = FromUtf8(Embedded(L"SCHEMA"));
  TextView rest = script;
  while (rest.find(L';') != TextView::npos) {
    const auto end = rest.find(L';');
    database.Execute(rest.substr(0, end));
    rest.remove_prefix(end + 1);
  }
}

// A nested package is stored as its text.
Value Cell(const Json& json) { return json.is_structured() ? Value(TextView(ToColumn(json))) : FromJson(json); }

void InsertRow(Database& database, const std::string& table, const Json& row) {
  std::string names, marks;
  std::vector<Value> values;
  for (const auto& [name, value] : row.items()) {
    names += (names.empty() ? "" : ", ") + name;
    marks += marks.empty() ? "?" : ", ?";
    values.push_back(Cell(value));
  }
  const Text sql = FromUtf8("INSERT INTO " + table + " (" + names + ") VALUES (" + marks + ")");
  database.Execute(sql, std::span<const Value>(values));
}

void FillTables(Database& database) {
  const auto seed = Json::parse(Embedded(L"SEED"));
  for (const auto& [table, rows] : seed.items()) {
    for (const auto& row : rows) InsertRow(database, table, row);
  }
}

}  // namespace

void PrepareTables(Database& database) {
  if (HasTables(database)) return;
  try {
    Transaction transaction(database);
    MakeTables(database);
    FillTables(database);
    transaction.Commit();
  } catch (const Error&) {
    if (!HasTables(database)) throw;  // otherwise another process was first
  }
}

}  // namespace tavio::development
