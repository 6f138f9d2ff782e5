#pragma once

#include "development/storage/PlatformObject.h"
#include "foundation/packages/Dictionary.h"

namespace tavio::development {

// MorlaMobileOpen.MorlaSendMail: the mail gateway. Nothing leaves the machine: each mail becomes an RFC 5322 file in
// the folder "outbox" of the storage folder, and a row of t_MailOutbox.
//   MorlaSendMail(request)   request: a Dictionary with PropsString, Addrecipients (separated by ";"), Subject, Body and
//                            Addattachment (a path or ""). Answers "", or why it could not be sent. The sender is the
//                            account of the settings "Base_EMAIL", "Setting".
class MailGateway final : public PlatformObject {
 public:
  MailGateway();

 private:
  void Send(const Dictionary& request);
};

}  // namespace tavio::development
