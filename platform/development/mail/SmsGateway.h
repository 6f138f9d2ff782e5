#pragma once

#include "development/storage/PlatformObject.h"
#include "foundation/packages/Vector.h"

namespace tavio::development {

// MorlaMobileOpen.MobileOpen: the SMS gateway. Nothing leaves the machine: each request becomes a row of t_SmsOutbox.
//   SmsSendForBillCheck(requests)   a Vector of Dictionaries with PropsString, Recipients (separated by ","), SMContent,
//                                   SmsIsBack, BillType, BillNo; stored all or none
class SmsGateway final : public PlatformObject {
 public:
  SmsGateway();

 private:
  void Send(const Vector& requests);
};

}  // namespace tavio::development
