#include "development/environment/PropStore.h"

#include "development/environment/CurrentUser.h"
#include "foundation/values/Error.h"
#include "foundation/values/Text.h"

namespace tavio::development {
namespace {

constexpr wchar_t kUserId[] = L"UserID";
constexpr wchar_t kUserName[] = L"UserName";

// The value of a property, added if there is none of that name.
Text& ValueOf(PropStore::Pairs& pairs, const wchar_t* name) {
  for (auto& [known, value] : pairs) {
    if (ToUpper(known) == ToUpper(name)) return value;
  }
  return pairs.emplace_back(name, Text()).second;
}

}  // namespace

PropStore::PropStore() {
  Add(L"GetProperty", [this](Arguments& a) { return GetProperty(a.At(1).ToText()); });
  Add(L"SetProperty", [this](Arguments& a) {
    SetProperty(a.At(0).ToText(), a.At(1).ToText());
    return Value();
  });
}

PropStore::Pairs PropStore::Properties() {
  Pairs pairs;
  const Rows rows = Store().Query(L"SELECT FName, FValue FROM t_SharedProperty ORDER BY FIndex");
  for (const auto& row : rows.cells) pairs.emplace_back(row[0].ToText(), row[1].ToText());
  if (const auto user = ChosenUser(Store())) {
    ValueOf(pairs, kUserId) = std::to_wstring(user->id);
    ValueOf(pairs, kUserName) = user->name;
  }
  return pairs;
}

Value PropStore::GetProperty(const Text& name) {
  Text joined;
  for (const auto& [known, value] : Properties()) {
    if (ToUpper(known) == ToUpper(name)) return Value(TextView(value));
    joined += known + L"=" + value + L";";
  }
  return ToUpper(name) == L"PROPSSTRING" ? Value(TextView(joined)) : Value();
}

void PropStore::SetProperty(const Text& name, const Text& value) {
  const Text known = ToUpper(name);
  if ((known == ToUpper(kUserId) || known == ToUpper(kUserName)) && ChosenUser(Store())) {
    throw Error(E_ACCESSDENIED, L"TavioSharedProps.PropStore", L"用户由环境变量 TAVIO_DEV_USER 指定");
  }
  Transaction transaction(Store());
  if (Store().Execute(L"UPDATE t_SharedProperty SET FValue = ? WHERE UPPER(FName) = ?", value, known) == 0) {
    Store().Execute(
        L"INSERT INTO t_SharedProperty (FIndex, FName, FValue) "
        L"SELECT COALESCE(MAX(FIndex), 0) + 1, ?, ? FROM t_SharedProperty",
        name, value);
  }
  transaction.Commit();
}

}  // namespace tavio::development
