#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioMBOSMultiCheck.BillInfo: what multi-level approval knows.
//   GetUsers(connection string) -> record set with FUserID and FName of every user, disabled ones included
class MultiCheckInfo final : public PlatformObject {
 public:
  MultiCheckInfo();
};

}  // namespace tavio::development
