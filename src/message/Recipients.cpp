#include "message/Recipients.h"

#include "foundation/environment/Operation.h"
#include "foundation/packages/Walk.h"

namespace tavio {

void AddRecipient(const Dictionary& recipients, std::int32_t user, const Dictionary& package) {
  const Key key(user);
  if (recipients.Lookup(key)) return;
  const auto entry = Dictionary::New();
  entry.Set(L"FUserID"_key, Value(user));
  entry.Set(L"FMessageID"_key, *package.Get(L"FID"_key));
  recipients.Set(key, entry);
}

bool RemoveRecipient(const Dictionary& recipients, std::int32_t user) {
  const Key key(user);
  if (!recipients.Lookup(key)) return false;
  recipients.Remove(key);
  return true;
}

void RemoveRecipients(const Dictionary& recipients, const Vector& users) {
  if (!users) return;
  for (const auto& user : Items(users)) {
    const Key key(TextView(user->ToText()));
    if (recipients.Lookup(key)) recipients.Remove(key);
  }
}

Dictionary ExcludeUsers(const Dictionary& recipients, const Vector& excluded, const wchar_t* report) noexcept {
  if (!recipients) return {};
  return Operation<Dictionary>({.report = report}, [&](Dictionary& left) {
    RemoveRecipients(recipients, excluded);
    left = recipients;
  });
}

}  // namespace tavio
