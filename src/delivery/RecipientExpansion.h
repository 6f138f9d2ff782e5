#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// What the platform knows of the recipients of a mail or a short message, asked once per type of recipient: under each
// type letter a Vector of user records ("FUserID", "FName", "Email", "Mobile"), in the order in which the types first
// occur, and under "UserInfoEx" what the platform adds for all of them, or "".
// A recipient's entry may carry its type in "FUserType" ("E" employee, "C" customer, "S" supplier, "U" user, which is
// also what none means) and its ID in "FUserID"; an entry without an ID is known by its key.
// Unset where there are no recipients. Raises Error where an ID is no 32-bit number or the platform cannot answer.
Dictionary ExpandRecipients(const Dictionary& recipients);

// The texts of `field` ("Email" or "Mobile") of all users of an expansion, joined as AddressList does it; empty where
// the expansion is unset or nobody has one.
Text JoinAddresses(const Dictionary& expansion, const Key& field, Char separator);

}  // namespace tavio
