#include "development/environment/PropStore.h"

#include "foundation/values/Text.h"

namespace tavio::development {

PropStore::PropStore() {
  Add(L"GetProperty", [this](Arguments& a) { return GetProperty(a.At(1).ToText()); });
  Add(L"SetProperty", [this](Arguments& a) {
    SetProperty(a.At(0).ToText(), a.At(1).ToText());
    return Value();
  });
}

Value PropStore::GetProperty(const Text& name) {
  if (ToUpper(name) == L"PROPSSTRING") return Value(TextView(PropsString()));
  return Store().FirstCell(L"SELECT FValue FROM t_SharedProperty WHERE UPPER(FName) = ?", ToUpper(name));
}

Text PropStore::PropsString() {
  const Rows rows = Store().Query(L"SELECT FName, FValue FROM t_SharedProperty ORDER BY FIndex");
  Text pairs;
  for (const auto& row : rows.cells) pairs += row[0].ToText() + L"=" + row[1].ToText() + L";";
  return pairs;
}

void PropStore::SetProperty(const Text& name, const Text& value) {
  Transaction transaction(Store());
  const Text known = ToUpper(name);
  if (Store().Execute(L"UPDATE t_SharedProperty SET FValue = ? WHERE UPPER(FName) = ?", value, known) == 0) {
    Store().Execute(
        L"INSERT INTO t_SharedProperty (FIndex, FName, FValue) "
        L"SELECT COALESCE(MAX(FIndex), 0) + 1, ?, ? FROM t_SharedProperty",
        name, value);
  }
  transaction.Commit();
}

}  // namespace tavio::development
