#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// The user's settings for sending, as {sms: {...}, email: {...}}. Each of the two comes from the client's user profile,
// else from the server's, and is empty if neither has it.
// "email" holds exactly these texts, trimmed: txtMailSrv (the server; empty if mail is not set up), txtAccountName
// and txtShowName (address and name of the sender), chkSmtp (whether the server wants a login), txtRZName and
// txtRZPassword (the login), SendOnTimeAccount, SendOnTimePassword, txtRecivePassword. What the profile leaves empty
// comes from the values of the same names under HKEY_LOCAL_MACHINE\SoftWare\Morla\SMReg.
// Raises Error if a profile cannot be read. Holds passwords in plain: never log or show it.
Dictionary LoadMailSettings();

}  // namespace tavio
