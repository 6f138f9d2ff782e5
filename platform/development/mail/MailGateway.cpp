#include "development/mail/MailGateway.h"

#include <cstdio>

#include "development/mail/Mime.h"
#include "development/storage/Files.h"
#include "development/storage/Settings.h"
#include "foundation/values/Error.h"

namespace tavio::development {
namespace {

Text TextAt(const Dictionary& record, const wchar_t* key) { return record.GetValue(Key(TextView(key)))->ToText(); }

Mail MailFrom(const Dictionary& request, const Dictionary& settings) {
  Mail mail;
  mail.from = TextAt(settings, L"txtAccountName");
  if (!IsAddress(mail.from)) mail.from = L"platform@localhost";
  mail.fromName = TextAt(settings, L"txtShowName");
  mail.recipients = SplitAddresses(TextAt(request, L"Addrecipients"));
  mail.subject = TextAt(request, L"Subject");
  mail.body = TextAt(request, L"Body");
  const Text attached = TextAt(request, L"Addattachment");
  if (!attached.empty()) mail.attachments.push_back(ReadAttachment(attached));
  return mail;
}

}  // namespace

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
      id, NowText(), TextAt(request, L"Addrecipients"), mail.subject, mail.body, TextAt(request, L"Addattachment"),
      file);
  WriteWhole(file, Compose(mail));
  transaction.Commit();
}

}  // namespace tavio::development
