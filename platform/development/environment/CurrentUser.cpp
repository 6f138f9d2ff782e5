#include "development/environment/CurrentUser.h"

#include "development/storage/Storage.h"
#include "foundation/values/Error.h"

namespace tavio::development {

std::optional<User> ChosenUser(Database& database) {
  const Text chosen = Environment(L"TAVIO_DEV_USER");
  if (chosen.empty()) return std::nullopt;
  const Rows users = database.Query(L"SELECT FUserID, FName FROM t_User WHERE FForbidden <> 1");
  for (const auto& user : users.cells) {
    if (user[0].EqualsText(chosen)) return User{user[0].ToInt32(), user[1].ToText()};
  }
  throw Error(E_INVALIDARG, L"DevPlatform", L"环境变量 TAVIO_DEV_USER 指定的用户不存在或已禁用: " + chosen);
}

std::int32_t CurrentUserId(Database& database) {
  const auto chosen = ChosenUser(database);
  if (chosen) return chosen->id;
  return database.FirstCell(L"SELECT FValue FROM t_SharedProperty WHERE FName = 'UserID'").ToInt32();
}

}  // namespace tavio::development
