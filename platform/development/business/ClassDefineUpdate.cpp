#include "development/business/ClassDefineUpdate.h"

#include "development/business/BillActionTable.h"
#include "foundation/values/Error.h"

namespace tavio::development {

ClassDefineUpdate::ClassDefineUpdate() {
  AddServed(L"SaveBillActions", [this](Arguments& a) {
    SaveBillActions(a);
    return Value();
  });
}

void ClassDefineUpdate::SaveBillActions(const Arguments& arguments) {
  const std::int32_t classTypeId = arguments.At(1).ToInt32();
  const Dictionary actions(arguments.At(2));
  if (classTypeId == 0 || !actions) {
    throw Error(E_INVALIDARG, L"TavioMClass.ClassDefineUpdate", L"SaveBillActions 需要业务对象和操作集合");
  }
  BillActionTable table(Store(), classTypeId);
  table.Save(actions, Dictionary(arguments.OrEmpty(3)));
  arguments.Return(2, table.Load().AsValue());
}

}  // namespace tavio::development
