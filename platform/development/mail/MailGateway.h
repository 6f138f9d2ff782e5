#pragma once

#include "development/storage/PlatformObject.h"
#include "foundation/packages/Dictionary.h"

namespace tavio::development {

// MorlaMobileOpen.MorlaSendMail: the mail gateway. Nothing leaves the machine: each mail becomes an RFC 5322 file in
// the folder "outbox" of the storage folder, and a row of t_MailOutbox. The setting MailWay (Settings.h) has it refuse
// every mail instead, or makes it one that is not there.
//   MorlaSendMail(request)   request: a Dictionary with PropsString, Addrecipients (separated by ";"), Subject, Body and
//                            Addattachment (a path or ""). Answers "", or why it could not be sent. The sender is the
//                            account of the settings "Base_EMAIL", "Setting".
class MailGateway final : public PlatformObject {
 public:
  MailGateway();

  // Whether its class is to be had. Clients of the platform that find no gateway send by themselves.
  static bool IsThere() noexcept;

 private:
  void Send(const Dictionary& request);
};

}  // namespace tavio::development
