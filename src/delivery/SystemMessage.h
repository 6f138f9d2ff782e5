#pragma once

#include <vector>

#include "foundation/packages/Dictionary.h"

namespace tavio {

struct SystemMessage {
  Text content;
  Text title;
  std::vector<std::int32_t> users;
  std::int32_t classTypeId;
  std::int32_t billId;
};

// The user IDs that are the keys of a list of recipients, in its order. Raises an overflow beyond 32,767 of them and for
// a key beyond 32 bits, and a type mismatch for a key that is no number.
std::vector<std::int32_t> UserIdsOf(const Dictionary& recipients);

// Hands a message to the platform's command, as bytes that go through a temporary file. `sent` is true once the
// command was called without a failure, even if what comes behind it raises Error.
void SendSystemMessage(const SystemMessage& message, bool& sent);

}  // namespace tavio
