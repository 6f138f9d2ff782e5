#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// Adds the recipient entry of a user (FUserID, and the FID of the message as FMessageID) under the user's ID; an entry
// that is already there stays.
void AddRecipient(const Dictionary& recipients, std::int32_t user, const Dictionary& message);

}  // namespace tavio
