#include "development/mail/JmailMessage.h"

#include "development/mail/Smtp.h"
#include "foundation/values/Error.h"

namespace tavio::development {

JmailMessage::JmailMessage() {
  for (const auto* name : {L"ContentTransferEncoding", L"Encoding", L"ISOEncodeHeaders"}) AddKept(name);
  AddText(L"Charset", mail_.charset);
  AddText(L"MailServerUserName", user_);
  AddText(L"MailServerPassWord", password_);
  AddText(L"From", mail_.from);
  AddText(L"FromName", mail_.fromName);
  AddText(L"Subject", mail_.subject);
  AddText(L"HTMLBody", html_);
  AddText(L"Body", plain_);
  Add(
      L"Logging", [this](Arguments&) { return Value(logging_); },
      [this](Arguments& a) {
        logging_ = a.At(0).ToBool();
        return Value();
      });
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

void JmailMessage::AddText(const wchar_t* name, Text& held) {
  Add(
      name, [&held](Arguments&) { return Value(TextView(held)); },
      [&held](Arguments& a) {
        held = a.At(0).ToText();
        return Value();
      });
}

void JmailMessage::AddKept(const wchar_t* name) {
  Add(
      name, [this, name](Arguments&) { return kept_[name].Copy(); },
      [this, name](Arguments& a) {
        kept_[name] = a.At(0);
        return Value();
      });
}

bool JmailMessage::Send(const Text& server) {
  mail_.isHtml = !html_.empty();
  mail_.body = mail_.isHtml ? html_ : plain_;
  error_.clear();
  try {
    SendOverSmtp(server, {user_, password_}, mail_, logging_ ? &log_ : nullptr);
    return true;
  } catch (const Error& error) {
    error_ = error.Description();
    return false;
  }
}

}  // namespace tavio::development
