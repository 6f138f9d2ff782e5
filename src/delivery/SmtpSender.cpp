#include "delivery/SmtpSender.h"

#include "delivery/AddressList.h"
#include "delivery/MailHeader.h"
#include "delivery/MailSettings.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/ShowMessage.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Fields.h"

namespace tavio {
namespace {

Text FieldText(const Dictionary& request, const Key& key) {
  Text text;
  request.GetValue(key)->AppendTo(text);
  return text;
}

const Text& Fitting(const Text& text) {
  if (!FitsHeader(text)) throw Error(E_INVALIDARG, L"SmtpSender", Text());
  return text;
}

void Assign(const Component& mail, const wchar_t* property, const Text& text) {
  mail.Assign(property, Value(TextView(text)));
}

void AssignEncoding(const Component& mail) {
  Assign(mail, L"Charset", L"GB2312");
  Assign(mail, L"ContentTransferEncoding", L"base64");
  Assign(mail, L"Encoding", L"base64");
  mail.Assign(L"ISOEncodeHeaders", Value(true));
  mail.Assign(L"Logging", Value(true));
}

}  // namespace

SmtpSender::SmtpSender() : settings_(PackageAt(LoadMailSettings(), L"email"_key)) {}

Text SmtpSender::Setting(const wchar_t* name) const { return settings_.Get(Key(TextView(name)))->ToText(); }

bool SmtpSender::LogsIn() const {
  const auto stored = Setting(L"chkSmtp");
  return !stored.empty() && Value(TextView(stored)).ToBool();
}

bool SmtpSender::Send(const Dictionary& request) const {
  if (!HasServer()) {
    Warn(L"你还没有设置邮件服务信息。");
    return false;
  }
  // What went wrong in detail is not shown: the component's own words may hold the login.
  const bool sent = Operation<bool>({}, [&](bool& done) {
    Deliver(request);
    done = true;
  });
  if (!sent) Warn(L"发送邮件失败！");
  return sent;
}

void SmtpSender::Deliver(const Dictionary& request) const {
  const auto sender = Fitting(Setting(L"txtAccountName"));
  const auto senderName = Fitting(Setting(L"txtShowName"));
  const auto recipients = Fitting(FieldText(request, L"Addrecipients"_key));
  const auto mail = Component::Create(L"Jmail.Message");
  AssignEncoding(mail);
  if (LogsIn()) {
    Assign(mail, L"MailServerUserName", Setting(L"txtRZName"));
    Assign(mail, L"MailServerPassWord", Setting(L"txtRZPassword"));
  }
  Assign(mail, L"From", sender);
  Assign(mail, L"FromName", senderName);
  for (const auto address : SplitAddresses(recipients, L';')) mail.Call(L"AddRecipient", address);
  Assign(mail, L"Subject", FoldedForHeader(FieldText(request, L"Subject"_key)));
  Assign(mail, L"HTMLBody", WithHtmlLineBreaks(FieldText(request, L"Body"_key)));
  const auto attachment = FieldText(request, L"Addattachment"_key);
  if (!attachment.empty()) mail.Call(L"AddAttachment", attachment, false);
  // Some answer whether they sent it, others only fail.
  const auto sent = mail.Call(L"Send", Setting(L"txtMailSrv"));
  if (!sent.IsEmpty() && !sent.ToBool()) throw Error(E_FAIL, L"SmtpSender", Text());
}

}  // namespace tavio
