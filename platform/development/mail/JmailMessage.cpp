#include "development/mail/JmailMessage.h"

#include "development/mail/Smtp.h"
#include "development/storage/Settings.h"
#include "foundation/values/Error.h"

namespace tavio::development {

JmailMessage::JmailMessage() {
  for (const auto* name : {L"ContentTransferEncoding", L"Encoding", L"ISOEncodeHeaders"}) AddKept(name, kept_[name]);
  AddKept(L"Charset", mail_.charset);
  AddKept(L"MailServerUserName", user_);
  AddKept(L"MailServerPassWord", password_);
  AddKept(L"From", mail_.from);
  AddKept(L"FromName", mail_.fromName);
  AddKept(L"Subject", mail_.subject);
  AddKept(L"HTMLBody", html_);
  AddKept(L"Body", plain_);
  AddKept(L"Logging", logging_);
  Add(L"AddRecipient", [this](Arguments& a) {
    mail_.recipients.push_back(a.At(0).ToText());
    return Value();
  });
  Add(L"AddAttachment", [this](Arguments& a) {
    mail_.attachments.push_back(ReadAttachment(a.At(0).ToText()));
    return Value();
  });
  Add(L"Send", [this](Arguments& a) { return Value(Send(a.At(0).ToText())); });
  Add(L"ErrorMessage", [this](Arguments&) { return Value(TextView(error_)); });
  Add(L"Log", [this](Arguments&) { return Value(TextView(log_)); });
}

bool JmailMessage::Send(const Text& server) {
  mail_.isHtml = !html_.empty();
  mail_.body = mail_.isHtml ? html_ : plain_;
  error_.clear();
  try {
    if (SettingOf(Store(), L"MailWay") != L"smtp") {
      throw Error(E_ACCESSDENIED, L"Jmail.Message", L"本平台设置为不通过 SMTP 发送邮件");
    }
    const bool tellsEveryone = SettingOf(Store(), L"MailLogin") == L"anywhere";
    SendOverSmtp(server, {user_, password_, tellsEveryone}, mail_, logging_ ? &log_ : nullptr);
    return true;
  } catch (const Error& error) {
    error_ = error.Description();
    return false;
  }
}

}  // namespace tavio::development
