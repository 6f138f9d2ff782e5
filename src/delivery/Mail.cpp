#include <optional>

#include "delivery/RecipientExpansion.h"
#include "delivery/SmtpSender.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/ResText.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/environment/ShowMessage.h"
#include "foundation/packages/Fields.h"
#include "message/Message.h"

namespace tavio {
namespace {

std::optional<Component> Gateway() {
  try {
    return Component::Create(L"MorlaMobileOpen.MorlaSendMail");
  } catch (const Error&) {
    return std::nullopt;
  }
}

bool SendDirectly(const Dictionary& request) {
  const SmtpSender sender;
  return sender.HasServer() && sender.Send(request);
}

// The gateway answers with the reason of a failure, which only administrators understand.
bool SendThrough(const Component& gateway, Dictionary request) {
  if (gateway.Call(L"MorlaSendMail", ByRef(request)).EqualsText(L"")) return true;
  ShowMessage(LoadResText(L"发送邮件失败,请检查邮箱是否配置正确！"), kWarning, kTitle);
  return false;
}

}  // namespace

Text Message::AddressesOf(const Key& list, const Key& field, wchar_t separator) const {
  const auto stored = PackageAt(message_, list);
  if (!stored) return {};
  const auto recipients = stored.CloneAll();
  RemoveFrom(recipients);
  return JoinAddresses(ExpandRecipients(recipients), field, separator);
}

Dictionary Message::MailRequest(const Text& addresses) {
  const auto request = Dictionary::New();
  request.Set(L"PropsString"_key, Value(TextView(GetPropsString())));
  request.Set(L"Addrecipients"_key, Value(TextView(addresses)));
  request.Set(L"Subject"_key, *message_.GetValue(L"FTitle"_key));
  request.Set(L"Body"_key, Value(TextView(TransValues(message_.Get(L"FMessage"_key)->ToText()))));
  request.Set(L"Addattachment"_key, Value(L""));
  request.Set(L"bLog"_key, Value(std::int16_t{0}));
  return request;
}

// The path of the printed bill. A bill that cannot be printed is no reason to keep the mail back: the path is empty.
Text Message::PrintBill(const Component& dataService) const noexcept {
  return Operation<Text>({}, [&](Text& path) {
    const auto print = Component::Create(L"TavioClassBillPrint.clsNotePrint");
    print.Assign(L"dataSrv", Value(dataService.Object()));
    print.Assign(L"TableInfo", tableInfo_.AsValue());
    // The file is named after the business object. The path comes back in the name's place.
    Text name = classType_.GetValue(Key(TextView(L"FName_" + GetPropValue(L"Language"))))->ToText();
    auto bill = billId_;
    if (print.Call(L"CreatePDFFile", ByRef(name), ByRef(bill), GetPropsString()).ToBool()) path = name;
  });
}

bool Message::SendEmail(const Component& dataService) noexcept {
  return Operation<bool>({}, [&](bool& sent) {
    const auto addresses = AddressesOf(L"EmailUsers"_key, L"Email"_key, L';');
    if (addresses.empty()) return;
    const auto request = MailRequest(addresses);
    if (message_.GetValue(L"FAccessoryForEmail"_key, Value(false))->OrEmpty().ToBool()) {
      request.Set(L"Addattachment"_key, Value(TextView(PrintBill(dataService))));
    }
    const auto gateway = Gateway();
    sent = gateway ? SendThrough(*gateway, request) : SendDirectly(request);
  });
}

}  // namespace tavio
