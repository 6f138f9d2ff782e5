#include "message/VariableList.h"

#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"

namespace tavio {
namespace {

constexpr std::int32_t kLookUpUser = 7;

bool IsStored(const Dictionary& field) { return field.Get(L"FNeedSave"_key)->OrEmpty().ToBool(); }

// 12 is a field that is there for the platform only.
bool IsVisible(const Dictionary& field) {
  const auto visible = NumberAt(field, L"FVisible"_key);
  return visible != 0 && visible != 12;
}

bool HoldsUser(const Dictionary& field) { return NumberAt(field, L"FLookUpType"_key) == kLookUpUser; }

void AddEntry(const Dictionary& list, const Dictionary& field) {
  const Value name{TextView(field.Get(L"FKey"_key)->ToText())};
  const auto entry = Dictionary::New();
  entry.Set(L"FName"_key, name);
  entry.Set(L"FCaption"_key, Value(TextView(field.Get(L"FCaption"_key)->OrEmpty().ToText())));
  list.Set(KeyOf(name), entry);
}

// Calls `visit` with the record of each header field, in order.
template <class Visit>
void ForEachHeaderField(const Dictionary& tableInfo, Visit&& visit) {
  const auto page = tableInfo.Find(L"Page1"_key);
  if (!page) return;
  for (const auto& field : Entries(Dictionary(**page))) visit(Dictionary(*tableInfo.Get(Key(field.KeyView()))));
}

}  // namespace

void ListVariables(const Dictionary& tableInfo, const Dictionary& variables) {
  ForEachHeaderField(tableInfo, [&](const Dictionary& field) {
    if (IsStored(field) && IsVisible(field)) AddEntry(variables, field);
  });
}

void ListVariableUsers(const Dictionary& tableInfo, const Dictionary& variableUsers) {
  ForEachHeaderField(tableInfo, [&](const Dictionary& field) {
    if (IsStored(field) && HoldsUser(field)) AddEntry(variableUsers, field);
  });
}

bool IsVariable(const Dictionary& variable) {
  return variable && variable.Lookup(L"FName"_key) && variable.Lookup(L"FCaption"_key);
}

void StoreVariable(const Dictionary& variables, const Dictionary& variable) {
  const auto entry = Dictionary::New();
  const auto name = variable.Get(L"FName"_key);
  entry.Set(L"FName"_key, *name);
  entry.Set(L"FCaption"_key, *variable.Get(L"FCaption"_key));
  const auto value = variable.Find(L"FValue"_key);
  entry.Set(L"FValue"_key, value ? (*value)->Copy() : Value(L""));
  variables.Set(KeyOf(*name), entry);
}

}  // namespace tavio
