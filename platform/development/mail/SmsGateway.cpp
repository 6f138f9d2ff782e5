#include "development/mail/SmsGateway.h"

#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Error.h"

namespace tavio::development {

SmsGateway::SmsGateway() {
  Add(L"SmsSendForBillCheck", [this](Arguments& a) {
    Send(Vector(a.At(0)));
    return Value(true);
  });
}

void SmsGateway::Send(const Vector& requests) {
  const Text time = NowText();
  Transaction transaction(Store());
  std::int32_t id = ReserveIds(Store(), L"Sms", requests.Count());
  for (const auto& request : Records(requests)) {
    RequireProperties(*request.GetValue(L"PropsString"_key));
    const Text recipients = TextAt(request, L"Recipients"_key);
    if (recipients.empty()) throw Error(E_INVALIDARG, L"MorlaMobileOpen.MobileOpen", L"没有接收号码");
    Store().Execute(
        L"INSERT INTO t_SmsOutbox (FID, FTime, FRecipients, FContent, FBillType, FBillNo, FIsBack) "
        L"VALUES (?, ?, ?, ?, ?, ?, ?)",
        id++, time, recipients, TextAt(request, L"SMContent"_key), NumberAt(request, L"BillType"_key, 0),
        NumberAt(request, L"BillNo"_key, 0), FlagAt(request, L"SmsIsBack"_key));
  }
  transaction.Commit();
}

}  // namespace tavio::development
