#include "foundation/environment/Operation.h"
#include "foundation/environment/ShowMessage.h"
#include "foundation/packages/Fields.h"
#include "message/Message.h"
#include "message/Recipients.h"

namespace tavio {

void AddRecipient(const Dictionary& recipients, std::int32_t user, const Dictionary& message) {
  const Key key(user);
  if (recipients.Lookup(key)) return;
  const auto entry = Dictionary::New();
  entry.Set(L"FUserID"_key, Value(user));
  entry.Set(L"FMessageID"_key, *message.Get(L"FID"_key));
  recipients.Set(key, entry);
}

// The list of the package, or a new one that the package does not know yet.
Dictionary Message::MessageUsersOfPackage() const {
  auto users = PackageAt(message_, L"MessageUsers"_key);
  return users ? users : Dictionary::New();
}

bool Message::AddUser(std::int32_t user) noexcept {
  return Operation<bool>({.log = L"TavioClassBillAction.Message.AddUser 向消息用户列表中加入用户",
                          .report = L"TavioClassBillAction.Message : AddUser"},
                         [&](bool& added) {
                           if (!message_) NewMessage();
                           const auto users = MessageUsersOfPackage();
                           AddRecipient(users, user, message_);
                           message_.Set(L"MessageUsers"_key, users.Clone());
                           added = true;
                         });
}

bool Message::RemoveUser(std::int32_t user) noexcept {
  return Operation<bool>({.log = L"TavioClassBillAction.Message.RemoveUser 从消息用户列表中删除用户",
                          .report = L"TavioClassBillAction.Message : RemoveUser",
                          .resultAfterFailure = Labels::kKept},
                         [&](bool& removed) {
                           if (!message_) NewMessage();
                           const auto users = MessageUsersOfPackage();
                           const Key key(user);
                           if (users.Lookup(key)) {
                             users.Remove(key);
                             removed = true;
                           }
                           message_.Set(L"MessageUsers"_key, users.Clone());
                         });
}

bool Message::RemoveAllUsers() noexcept {
  Operation({.report = L"TavioClassBillAction.Message : RemoveAllUsers"}, [&] {
    if (message_) message_.Set(L"MessageUsers"_key, Dictionary::New());
  });
  return false;  // hosts have learnt not to look at it
}

void Message::RemoveFrom(const Dictionary& recipients) const {
  if (!excludeUser_) return;
  const auto count = excludeUser_.Count();
  for (std::int32_t i = 1; i <= count; ++i) {
    const auto user = excludeUser_.Item(i);
    const Key key = KeyOf(*user);
    if (recipients.Lookup(key)) recipients.Remove(key);
  }
}

Dictionary Message::ExcludeUsers(const Dictionary& recipients) const noexcept {
  if (!recipients) return {};
  return Operation<Dictionary>({.report = L"TavioClassBillAction.Message : ExcludeUsers"}, [&](Dictionary& result) {
    RemoveFrom(recipients);
    result = recipients;
  });
}

// What SendMessage starts with. Its box shows the description alone; SendMessage reports the unset list once more.
Dictionary Message::RemoveExcludedUsers(const Dictionary& recipients) const noexcept {
  if (!recipients) return {};
  return Operation<Dictionary>({.report = kDescriptionOnly}, [&](Dictionary& result) {
    RemoveFrom(recipients);
    result = recipients;
  });
}

}  // namespace tavio
