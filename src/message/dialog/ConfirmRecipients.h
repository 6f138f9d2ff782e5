#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// Lets the user confirm the recipients of a message in the recipient dialog, whose caption has the FTitle of `package`.
// Afterwards `recipients` is a copy without those whom the user unticked, or, if the user refuses to send, the same
// list, emptied. Failures are silent: the recipients stay as they are, and sending goes on.
void ConfirmRecipients(Dictionary& recipients, const Dictionary& package) noexcept;

}  // namespace tavio
