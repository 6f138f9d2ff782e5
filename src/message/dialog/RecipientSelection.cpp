#include "message/dialog/RecipientSelection.h"

#include <unordered_map>

#include "foundation/environment/SharedProperties.h"
#include "foundation/environment/modFunction.h"
#include "foundation/packages/RecordSet.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Error.h"

namespace tavio {
namespace {

constexpr wchar_t kUnknown[] = L"Unknown";

// Unset for whatever is no package.
Dictionary EntryIn(const Value& stored) try {
  return stored.HoldsObject() ? Dictionary(stored) : Dictionary();
} catch (const Error&) {
  return {};
}

bool IsName(const Value& value) noexcept { return !value.IsEmpty() && value.Type() != VT_NULL && !value.IsObject(); }

Text NameOf(const Dictionary& entry) {
  const auto name = entry.GetValue(L"FName"_key);
  return IsName(*name) ? name->ToText() : kUnknown;
}

// Empty if the record set has no such field, or the record no value in it.
Text FieldText(const RecordSet& user, const wchar_t* field) try {
  const Value value = user.Field(field);
  return IsName(value) ? value.ToText() : Text();
} catch (const Error&) {
  return {};
}

Text NameOf(const RecordSet& user) {
  const Text name = FieldText(user, L"FName");
  return name.empty() ? FieldText(user, L"FUserName") : name;
}

// Of the client; all its properties if there is no such pair.
Text ConnectString() {
  const auto props = GetPropsString();
  try {
    return PropertyTable::ParseProps(props).GetProp(L"ConnectString");
  } catch (const Error&) {
    return props;
  }
}

RecordSet GetUsers() {
  const auto billInfo = Component::Create(L"TavioMBOSMultiCheck.BillInfo");
  return RecordSet(billInfo.Call(L"GetUsers", ConnectString()));
}

}  // namespace

bool RecipientSelection::InitForm() {
  rows_.clear();
  for (const auto& entry : Entries(users_)) {
    Text key(entry.KeyView());
    if (const auto user = EntryIn(entry.Stored())) rows_.push_back({NameOf(user), std::move(key)});
  }
  LookUpNames();
  return !rows_.empty();
}

void RecipientSelection::LookUpNames() try {
  std::unordered_map<TextView, Row*> unknown;
  for (auto& row : rows_) {
    if (row.name == kUnknown) unknown.emplace(row.key, &row);
  }
  if (unknown.empty()) return;
  for (const auto users = GetUsers(); !users.EndReached(); users.MoveNext()) {
    const auto found = unknown.find(FieldText(users, L"FUserID"));
    if (found == unknown.end()) continue;
    const Text name = NameOf(users);
    if (name.empty()) continue;
    auto& row = *found->second;
    Dictionary(*users_.Get(Key(TextView(row.key)))).Set(L"FName"_key, Value(TextView(name)));
    row.name = name;
  }
} catch (const Error&) {
  // Who is not known by name can still be ticked or not.
}

const Dictionary& RecipientSelection::UserDct() const {
  for (const auto& row : rows_) {
    if (!row.ticked) users_.Remove(Key(TextView(row.key)));
  }
  return users_;
}

}  // namespace tavio
