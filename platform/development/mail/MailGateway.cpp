#include "development/mail/MailGateway.h"

#include <cstdio>

#include "development/mail/Mime.h"
#include "development/storage/Files.h"
#include "development/storage/Settings.h"
#include "foundation/packages/Fields.h"
#include "foundation/values/Error.h"

namespace tavio::development {
namespace {

Mail MailFrom(const Dictionary& request, const Dictionary& settings) {
  Mail mail;
  mail.from = TextAt(settings, L"txtAccountName"_key);
  if (!IsAddress(mail.from)) mail.from = L"platform@localhost";
  mail.fromName = TextAt(settings, L"txtShowName"_key);
  mail.recipients = SplitAddresses(TextAt(request, L"Addrecipients"_key));
  mail.subject = TextAt(request, L"Subject"_key);
  mail.body = TextAt(request, L"Body"_key);
  const Text attached = TextAt(request, L"Addattachment"_key);
  if (!attached.empty()) mail.attachments.push_back(ReadAttachment(attached));
  return mail;
}

}  // namespace

bool MailGateway::IsThere() noexcept {
  try {
    return SettingOf(*OpenStorage(), L"MailWay") != L"smtp";
  } catch (...) {  // then its own call says why
    return true;
  }
}

MailGateway::MailGateway() {
  Add(L"MorlaSendMail", [this](Arguments& a) {
    try {
      Send(Dictionary(a.At(0)));
      return Value(L"");
    } catch (const Error& error) {  // the gateway answers failures as a text
      return Value(TextView(error.Description()));
    }
  });
}

void MailGateway::Send(const Dictionary& request) {
  if (!request) throw Error::NotSet();
  RequireProperties(*request.GetValue(L"PropsString"_key));
  if (SettingOf(Store(), L"MailWay") == L"refuse") {
    throw Error(E_ACCESSDENIED, L"MorlaMobileOpen.MorlaSendMail", L"本平台设置为不发送邮件");
  }
  const Mail mail = MailFrom(request, LoadProfile(Store(), kEverybody, L"Base_EMAIL", L"Setting"));
  CheckAddresses(mail);
  Transaction transaction(Store());
  const std::int32_t id = ReserveIds(Store(), L"Mail");
  wchar_t name[32];
  std::swprintf(name, std::size(name), L"%06d.eml", static_cast<int>(id));
  const Text file = FolderWithin(L"outbox") + name;
  Store().Execute(
      L"INSERT INTO t_MailOutbox (FID, FTime, FRecipients, FSubject, FBody, FAttachment, FFile) "
      L"VALUES (?, ?, ?, ?, ?, ?, ?)",
      id, NowText(), TextAt(request, L"Addrecipients"_key), mail.subject, mail.body,
      TextAt(request, L"Addattachment"_key), file);
  WriteWhole(file, Compose(mail));
  transaction.Commit();
}

}  // namespace tavio::development
