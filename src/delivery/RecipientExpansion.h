#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// What is asked of the platform about the recipients of a mail or a short message, once per type of recipient, in the
// order in which the types first occur. A recipient's entry may carry its type in "FUserType" ("E" employee, "C"
// customer, "S" supplier, "U" user, which is also what none means) and its ID in "FUserID"; an entry without an ID is
// known by its key.
// The results are joined as AddressList does it, and empty if there are no recipients or nobody has one. Raises Error
// if an ID is no 32-bit number or the platform cannot answer.

// Joined by ";".
Text MailAddressesOf(const Dictionary& recipients);
// Joined by ",".
Text MobileNumbersOf(const Dictionary& recipients);

}  // namespace tavio
