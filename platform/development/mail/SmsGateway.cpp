#include "development/mail/SmsGateway.h"

#include "foundation/values/Error.h"

namespace tavio::development {

SmsGateway::SmsGateway() {
  Add(L"SmsSendForBillCheck", [this](Arguments& a) {
    Send(Vector(a.At(0)));
    return Value(true);
  });
}

void SmsGateway::Send(const Vector& requests) {
  const std::int32_t count = requests.Count();
  const Text time = NowText();
  Transaction transaction(Store());
  std::int32_t id = ReserveIds(Store(), L"Sms", count);
  for (std::int32_t i = 1; i <= count; ++i) {
    const Dictionary request = requests.Record(i);
    RequireProperties(*request.GetValue(L"PropsString"_key));
    const Text recipients = request.GetValue(L"Recipients"_key)->ToText();
    if (recipients.empty()) throw Error(E_INVALIDARG, L"MorlaMobileOpen.MobileOpen", L"没有接收号码");
    Store().Execute(
        L"INSERT INTO t_SmsOutbox (FID, FTime, FRecipients, FContent, FBillType, FBillNo, FIsBack) "
        L"VALUES (?, ?, ?, ?, ?, ?, ?)",
        id++, time, recipients, request.GetValue(L"SMContent"_key)->ToText(),
        request.GetValue(L"BillType"_key)->ToInt32(), request.GetValue(L"BillNo"_key)->ToInt32(),
        request.GetValue(L"SmsIsBack"_key)->ToBool());
  }
  transaction.Commit();
}

}  // namespace tavio::development
