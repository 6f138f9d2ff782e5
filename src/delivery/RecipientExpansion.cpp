#include "delivery/RecipientExpansion.h"

#include <unordered_map>

#include "delivery/AddressList.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Text.h"

namespace tavio {
namespace {

constexpr wchar_t kUserInfoEx[] = L"UserInfoEx";

Text TypeOf(const Dictionary& entry) {
  Text type;
  if (entry) entry.GetValue(L"FUserType"_key)->AppendTo(type);
  return type.empty() ? L"U" : type;
}

std::int32_t IdOf(TextView key, const Dictionary& entry) {
  const auto stored = entry ? entry.Find(L"FUserID"_key) : std::nullopt;
  const Value id = stored ? (*stored)->Copy() : Value();  // an object's value is asked of it, more than once
  const bool known = stored && !id.IsNull() && !id.EqualsText(L"");
  return known ? id.ToInt32() : Value(key).ToInt32();
}

void AddTo(const Vector& users, std::int32_t user) {
  const auto record = Dictionary::New();
  record.Set(L"FUserID"_key, Value(user));
  users.Add(record);
}

// Under each type letter a Vector of records that hold the ID.
Dictionary GroupedByType(const Dictionary& recipients) {
  const auto groups = Dictionary::New();
  std::unordered_map<Text, Vector> byType;
  for (const auto& recipient : Entries(recipients)) {
    const Text key(recipient.KeyView());
    const auto entry = recipient.Stored().HoldsObject() ? recipient.Record() : Dictionary();
    const auto type = TypeOf(entry);
    const auto user = IdOf(key, entry);
    auto& users = byType[type];
    if (!users) {
      users = Vector::New();
      groups.Set(Key(TextView(type)), users.AsValue());
    }
    AddTo(users, user);
  }
  return groups;
}

// Without it the recipients are known all the same.
Value UserInfoExOf(const Component& users) try { return users.Read(kUserInfoEx); } catch (const Error&) {
  return Value(L"");
}

void AddField(const Vector& users, const Key& field, AddressList& list) {
  for (const auto& user : Records(users)) {
    Text address;
    user.GetValue(field)->AppendTo(address);
    list.Add(address, ToUpper(address));
  }
}

// Under each type letter a Vector of user records ("FUserID", "FName", "Email", "Mobile"), and under "UserInfoEx" what
// the platform adds for all of them, or "".
Dictionary Expand(const Dictionary& recipients) {
  const auto groups = GroupedByType(recipients);
  const auto expansion = Dictionary::New();
  const auto users = Component::Create(L"TavioMSmsManager.clsBillUseInfo");
  const Text props = GetPropsString();
  for (const auto& group : Entries(groups)) {
    Vector asked(group.Stored());
    const Vector known(users.Call(L"GetUserInfo", props, Text(group.KeyView()), ByRef(asked)));
    if (known) expansion.Set(group.BorrowKey(), known.AsValue());
  }
  expansion.Set(L"UserInfoEx"_key, UserInfoExOf(users));
  return expansion;
}

Text Join(const Dictionary& recipients, const Key& field, Char separator) {
  AddressList list(separator);
  if (!recipients || recipients.Count() == 0) return {};
  for (const auto& entry : Entries(Expand(recipients))) {
    if (entry.KeyView() != kUserInfoEx) AddField(Vector(entry.Stored()), field, list);
  }
  return list.Joined();
}

}  // namespace

Text MailAddressesOf(const Dictionary& recipients) { return Join(recipients, L"Email"_key, L';'); }
Text MobileNumbersOf(const Dictionary& recipients) { return Join(recipients, L"Mobile"_key, L','); }

}  // namespace tavio
