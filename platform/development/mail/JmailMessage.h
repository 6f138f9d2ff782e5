#pragma once

#include <map>

#include "development/mail/Mime.h"
#include "development/storage/PlatformObject.h"

namespace tavio::development {

// Jmail.Message: a mail sent over SMTP, for real, if the setting MailWay (Settings.h) says so; else every Send fails.
// Nothing of it is encrypted, so a login goes to servers on this machine alone, unless the setting MailLogin allows more.
//   Charset, Logging                         the charset of the mail; whether Log is kept
//   ContentTransferEncoding, Encoding, ISOEncodeHeaders
//                                            kept only: bodies are base64 and headers encoded whatever is assigned
//   MailServerUserName, MailServerPassWord   with a user name the server is asked for AUTH LOGIN
//   From, FromName, Subject, HTMLBody, Body  an HTMLBody goes before a Body
//   AddRecipient(address)   AddAttachment(path[, inline])   inline is not supported: everything is an attachment
//   Send(server[:port]) -> Boolean           False if it failed; ErrorMessage then says why
//   Log                                      the conversation, if Logging is True; without secrets
class JmailMessage final : public PlatformObject {
 public:
  JmailMessage();

 private:
  bool Send(const Text& server);

  Mail mail_;
  Text html_;
  Text plain_;
  Text user_;
  Text password_;
  Text error_;
  Text log_;
  bool logging_ = false;
  std::map<Text, Value> kept_;
};

}  // namespace tavio::development
