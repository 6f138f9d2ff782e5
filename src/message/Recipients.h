#pragma once

#include "foundation/packages/Vector.h"

namespace tavio {

// Lists of recipients, keyed by user ID. What reads or changes one raises Error if nothing else is said.

// Adds the recipient entry of a user (FUserID, and the FID of the message as FMessageID) under the user's ID; an entry
// that is already there stays.
void AddRecipient(const Dictionary& recipients, std::int32_t user, const Dictionary& package);
// Whether the user was a recipient.
bool RemoveRecipient(const Dictionary& recipients, std::int32_t user);
// Removes the users whose IDs are in a list, which may be unset.
void RemoveRecipients(const Dictionary& recipients, const Vector& users);
// The same as a step of a sending: answers the very recipients, or, after a failure that it shows under `report`, none.
Dictionary ExcludeUsers(const Dictionary& recipients, const Vector& excluded, const wchar_t* report) noexcept;

}  // namespace tavio
