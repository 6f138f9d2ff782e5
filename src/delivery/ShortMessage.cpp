#include "delivery/ShortMessage.h"

#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Component.h"

namespace tavio {

void SendShortMessage(const ShortMessage& message) {
  const auto request = Dictionary::New();
  request.Set(L"Recipients"_key, Value(TextView(message.numbers)));
  request.Set(L"SMContent"_key, Value(TextView(message.content)));
  request.Set(L"PropsString"_key, Value(TextView(GetPropsString())));
  request.Set(L"SmsIsBack"_key, Value(false));
  request.Set(L"BillType"_key, Value(message.classTypeId));
  request.Set(L"BillNo"_key, Value(message.billId));
  auto requests = Vector::New();
  requests.Add(request);
  Component::Create(L"MorlaMobileOpen.MobileOpen").Call(L"SmsSendForBillCheck", ByRef(requests));
}

}  // namespace tavio
