#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioMSmsManager.clsBillUseInfo: who is told of what, and at which address. A list is a Vector of records with FUserID, by value
// or by reference.
//   GetIsUserNeedSend(properties, list, kind) -> Dictionary keyed by user ID, of records FUserID, FIsNeedSend
//   GetUserInfo(properties, type, list)       -> Vector of records FUserID, FName, Email, Mobile; empty if nobody is
//                                                known. Types: U user (disabled ones are left out), E employee,
//                                                C customer, S supplier; FUserID is then the ID in that type's table
//   UserInfoEx                                a text that the host may set; ""
class BillUseInfo final : public PlatformObject {
 public:
  BillUseInfo();

 private:
  Value GetIsUserNeedSend(const Arguments& arguments);
  Value GetUserInfo(const Arguments& arguments);

  Text userInfoEx_;
};

}  // namespace tavio::development
