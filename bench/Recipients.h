#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio::bench {

// A message's list of that many users with IDs in succession, as the library itself writes it.
inline Dictionary Recipients(std::int32_t first, std::int32_t count) {
  const auto recipients = Dictionary::New();
  for (std::int32_t user = first; user < first + count; ++user) {
    const auto entry = Dictionary::New();
    entry.Set(L"FUserID"_key, Value(user));
    entry.Set(L"FMessageID"_key, Value(std::int16_t{0}));
    recipients.Set(Key(user), entry);
  }
  return recipients;
}

}  // namespace tavio::bench
