#include "development/environment/UserProfile.h"

#include "development/environment/CurrentUser.h"
#include "development/storage/PackageJson.h"
#include "development/storage/Settings.h"
#include "foundation/values/Error.h"
#include "foundation/values/PropsString.h"
#include "foundation/values/Text.h"

namespace tavio::development {
namespace {

void SaveProfile(Database& database, std::int32_t owner, const Text& section, const Text& name, const Json& package) {
  Transaction transaction(database);
  database.Execute(L"DELETE FROM t_UserProfile WHERE FUserID = ? AND FSection = ? AND FName = ?", owner, section, name);
  database.Execute(L"INSERT INTO t_UserProfile (FUserID, FSection, FName, FPackage) VALUES (?, ?, ?, ?)", owner,
                   section, name, ToColumn(package));
  transaction.Commit();
}

std::int32_t UserIn(const Text& properties) {
  return Value(TextView(FindPropValue(ToUpper(properties), L"USERID"))).ToInt32();
}

}  // namespace

ClientProfile::ClientProfile() {
  AddKept(L"UserIndependent", userIndependent_);
  Add(L"Load",
      [this](Arguments& a) { return LoadProfile(Store(), Owner(), a.At(0).ToText(), a.At(1).ToText()).AsValue(); });
  Add(L"Save", [this](Arguments& a) {
    SaveProfile(Store(), Owner(), a.At(0).ToText(), a.At(1).ToText(), ToJson(a.At(2)));
    return Value();
  });
}

std::int32_t ClientProfile::Owner() { return userIndependent_ ? kEverybody : CurrentUserId(Store()); }

ServerProfile::ServerProfile() {
  AddServed(L"LoadUserProfile", [this](Arguments& a) {
    const bool common = a.At(3).ToBool();
    const std::int32_t owner = common ? kEverybody : UserIn(a.At(0).ToText());
    return LoadProfile(Store(), owner, a.At(1).ToText(), a.At(2).ToText()).AsValue();
  });
}

}  // namespace tavio::development
