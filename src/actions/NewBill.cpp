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
  Operation({.log = L"TavioClassBillAction.BillActions.NewBill 加载该业务对象所属类别的默认操作",
             .report = L"TavioClassBillAction.BillActions : NewBill"},
            [&] {
              RequireBinding(L"NewBill");
              const Value defaults = Catalogue().Call(L"GetDefaultActions", *classType_.Get(L"FBillTypeID"_key));
              actions_ = Dictionary::New();
              const Vector actions(defaults);
              const auto count = CountedIn16Bits(actions.Count());
              for (std::int32_t i = 1; i <= count; ++i) {
                const auto action = actions.Record(i);
                MakeNew(action, classTypeId_);
                actions_.Set(KeyOf(*action.Get(L"FCode"_key)), action);
              }
            });
}

}  // namespace tavio
