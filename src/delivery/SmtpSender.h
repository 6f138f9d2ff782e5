#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// Sends mail over SMTP by itself, through Jmail.Message, if the platform's mail gateway is not there.
class SmtpSender {
 public:
  // With the settings of LoadMailSettings; raises Error as that does.
  SmtpSender();

  bool HasServer() const { return !Setting(L"txtMailSrv").empty(); }
  // Sends a mail request: "Addrecipients" (joined by ";"), "Subject", "Body" (plain text), "Addattachment" (a path or
  // empty). Whether the server took it; a box says that it did not, or that no server is set.
  // Addresses and names with line ends or NUL are refused, and folded to blanks in the subject: nobody can write
  // headers of his own.
  bool Send(const Dictionary& request) const;

 private:
  Text Setting(const wchar_t* name) const;
  bool LogsIn() const;
  void Deliver(const Dictionary& request) const;

  Dictionary settings_;
};

}  // namespace tavio
