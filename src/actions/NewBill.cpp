#include "actions/ActionStatus.h"
#include "actions/BillActions.h"
#include "foundation/environment/Operation.h"
#include "foundation/packages/Walk.h"

namespace tavio {
namespace {

void MakeNew(const Dictionary& action, std::int32_t classTypeId) {
  action.Set(L"FClassTypeID"_key, Value(classTypeId));
  action.Set(L"FID"_key, Value(std::int32_t{0}));
  action.Set(L"FStatus"_key, Value(kStatusNew));
  action.Set(L"FIsPredefine"_key, Value(true));
  action.Set(L"FIsFirst"_key, Value(false));
  action.Set(L"Messages"_key, Dictionary());
  action.Remove(L"FBillType"_key);
}

}  // namespace

// The catalogue is a component like any other: one that the platform registers in its place serves as well.
Component BillActions::Catalogue() {
  auto catalogue = Component::Create(L"TavioClassBillAction.PredefineActions");
  catalogue.Call(L"SetList", ByRef(predefineActions_));
  return catalogue;
}

void BillActions::NewBill() noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.NewBill 加载该业务对象所属类别的默认操作",
                           .report = L"TavioClassBillAction.BillActions : NewBill"};
  Operation(kLabels, [&] {
    RequireBinding(L"NewBill");
    const Value defaults = Catalogue().Call(L"GetDefaultActions", *classType_.Get(L"FBillTypeID"_key));
    const auto collection = Dictionary::New();
    actions_ = collection;
    for (const auto& action : RecordsIn16Bits(Vector(defaults))) {
      MakeNew(action, classTypeId_);
      collection.Set(KeyOf(*action.Get(L"FCode"_key)), action);
    }
  });
}

}  // namespace tavio
