#include "development/storage/Settings.h"

#include <algorithm>

#include "development/storage/PackageJson.h"
#include "foundation/values/Error.h"

namespace tavio::development {
namespace {

struct Known {
  TextView name;
  TextView values[3];  // the first is the one without a row
};

constexpr Known kSettings[] = {
    {L"LogEnabled", {L"0", L"1"}},
    {L"MailWay", {L"outbox", L"smtp", L"refuse"}},
    {L"MailLogin", {L"loopback", L"anywhere"}},
};

[[noreturn]] void Refuse(TextView why, TextView what) {
  throw Error(E_INVALIDARG, L"DevPlatform", Text(why) + Text(what));
}

const Known& Find(TextView name) {
  const auto* found = std::ranges::find(kSettings, name, &Known::name);
  if (found == std::end(kSettings)) Refuse(L"未知的设置 ", name);
  return *found;
}

}  // namespace

Text SettingOf(Database& database, TextView name) {
  const Value stored = database.FirstCell(L"SELECT FValue FROM t_Setting WHERE FName = ?", name);
  return stored.IsEmpty() ? Text(Find(name).values[0]) : stored.ToText();
}

void CheckSetting(TextView name, TextView value) {
  const bool known = !value.empty() && std::ranges::find(Find(name).values, value) != std::end(Find(name).values);
  if (!known) Refuse(Text(name) + L" 不能设为 ", value);
}

void StoreSetting(Database& database, TextView name, TextView value) {
  CheckSetting(name, value);
  Transaction transaction(database);
  database.Execute(L"DELETE FROM t_Setting WHERE FName = ?", name);
  database.Execute(L"INSERT INTO t_Setting (FName, FValue) VALUES (?, ?)", name, value);
  transaction.Commit();
}

Dictionary LoadProfile(Database& database, std::int32_t owner, const Text& section, const Text& name) {
  const Value package = database.FirstCell(
      L"SELECT FPackage FROM t_UserProfile WHERE FUserID = ? AND FSection = ? AND FName = ?", owner, section, name);
  return package.IsEmpty() ? Dictionary::New() : Dictionary(FromJson(FromColumn(package)));
}

}  // namespace tavio::development
