#include "development/storage/Schema.h"

#include <optional>

#include "development/storage/PlatformData.h"
#include "development/storage/Tables.h"
#include "foundation/values/Error.h"

namespace tavio::development {
namespace {

[[noreturn]] void Refuse(Database& database, const Text& why) {
  throw Error(E_FAIL, L"DevPlatform", L"不能使用数据库 " + database.Name() + L": " + why);
}

// None if there are no tables.
std::optional<std::int32_t> VersionOf(Database& database) {
  Rows rows;
  try {
    rows = database.Query(L"SELECT FVersion FROM t_PlatformVersion");
  } catch (const Error&) {  // no such table: each database has its own words for it
    return std::nullopt;
  }
  if (rows.Count() != 1 || rows.cells[0][0].Type() != VT_I4) Refuse(database, L"无法读取其版本");
  return rows.cells[0][0].ToInt32();
}

void Run(Database& database, const std::vector<Text>& statements) {
  for (const auto& statement : statements) database.Execute(statement);
}

void Make(Database& database) {
  Transaction transaction(database);
  Run(database, StatementsSince(0));
  database.Execute(L"INSERT INTO t_PlatformVersion (FVersion) VALUES (?)", kTablesVersion);
  FillData(database);
  transaction.Commit();
}

// The first statement lets the others wait who come with the same intention, and then find nothing to do.
void Upgrade(Database& database, std::int32_t from) {
  Transaction transaction(database);
  const auto mine =
      database.Execute(L"UPDATE t_PlatformVersion SET FVersion = ? WHERE FVersion = ?", kTablesVersion, from);
  if (mine == 0) return;
  Run(database, StatementsSince(from));
  transaction.Commit();
}

}  // namespace

void PrepareTables(Database& database) {
  auto version = VersionOf(database);
  try {
    if (!version) Make(database);
    if (version && *version < kTablesVersion) Upgrade(database, *version);
  } catch (const Error& error) {  // another process may have been first
    version = VersionOf(database);
    if (!version || *version < kTablesVersion) Refuse(database, error.Description());
  }
  if (version && *version > kTablesVersion) {
    Refuse(database,
           L"表的版本是 " + std::to_wstring(*version) + L",本程序只能处理到版本 " + std::to_wstring(kTablesVersion));
  }
}

}  // namespace tavio::development
