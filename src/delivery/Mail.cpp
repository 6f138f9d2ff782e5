#include "delivery/Mail.h"

#include <optional>

#include "delivery/SmtpSender.h"
#include "foundation/environment/ShowMessage.h"
#include "foundation/packages/Component.h"

namespace tavio {
namespace {

Dictionary RequestOf(const Mail& mail) {
  const auto request = Dictionary::New();
  request.Set(L"PropsString"_key, Value(TextView(mail.props)));
  request.Set(L"Addrecipients"_key, Value(TextView(mail.addresses)));
  request.Set(L"Subject"_key, mail.subject);
  request.Set(L"Body"_key, Value(TextView(mail.body)));
  request.Set(L"Addattachment"_key, Value(TextView(mail.attachment)));
  request.Set(L"bLog"_key, Value(std::int16_t{0}));
  return request;
}

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
  Warn(L"发送邮件失败,请检查邮箱是否配置正确！");
  return false;
}

}  // namespace

bool SendMail(const Mail& mail) {
  const auto request = RequestOf(mail);
  const auto gateway = Gateway();
  return gateway ? SendThrough(*gateway, request) : SendDirectly(request);
}

}  // namespace tavio
