#pragma once

#include <string>

#include "development/mail/Mime.h"

struct sockaddr;

namespace tavio::development {

struct SmtpAccount {
  Text user;  // no authentication if empty
  Text password;
  bool mayTellAnyone = false;  // the login, which goes unencrypted; otherwise servers on this machine alone
};

// Whether an address is of this machine itself, in whatever form it is written.
bool IsLoopback(const sockaddr& address) noexcept;

// Sends a mail to a server "host" or "host:port" (25 without one) in one SMTP conversation, with AUTH LOGIN if the
// account has a user. Raises Error if the server cannot be reached, must not be told the login, refuses a step or keeps silent for half a
// minute. `log`, if it is not null, takes both sides of the conversation, without secrets and without the mail
// itself.
void SendOverSmtp(const Text& server, const SmtpAccount& account, const Mail& mail, Text* log);

}  // namespace tavio::development
