#include "actions/BillActions.h"

#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"

namespace tavio {

void BillActions::RequireBinding(TextView operation) const {
  if (classTypeId_ != 0) return;
  throw Error::NotBound(L"TavioClassBillAction.BillActions." + Text(operation), L"请先设置本组件关联的业务对象!");
}

void BillActions::ClassType(Dictionary value) {
  classType_ = std::move(value);
  if (classType_ && classType_.Lookup(L"FID"_key)) classTypeId_ = classType_.Get(L"FID"_key)->ToInt32();
}

void BillActions::Initialize() noexcept { LoadReported(); }

void BillActions::Load() {
  RequireBinding(L"Initialize");
  actions_ = Dictionary();
  std::int32_t classTypeId = classTypeId_;
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  actions_ = Dictionary(classInfo.Call(L"GetBillActions", GetPropsString(), ByRef(classTypeId)));
}

// Initialize as hosts see it; also tells its failure to Save, which reports it once more as its own.
std::optional<Error> BillActions::LoadReported() noexcept {
  std::optional<Error> failure;
  Operation({.log = L"TavioClassBillAction.BillActions.Initialize 业务对象操作初始化",
             .report = L"TavioClassBillAction.BillActions : Initialize"},
            [&] {
              try {
                Load();
              } catch (...) {
                failure = Translate();
                throw;
              }
            });
  return failure;
}

bool BillActions::Save() noexcept {
  return Operation<bool>({.log = L"TavioClassBillAction.BillActions.Save 操作集合保存",
                          .report = L"TavioClassBillAction.BillActions : Save"},
                         [&](bool& saved) {
                           AssignRightMask();
                           std::int32_t classTypeId = classTypeId_;
                           Dictionary actions = actions_;
                           Dictionary classType = classType_;
                           {
                             const auto update = Component::Create(L"TavioMClass.ClassDefineUpdate");
                             update.Call(L"SaveBillActions", GetPropsString(), ByRef(classTypeId), ByRef(actions),
                                         ByRef(classType));
                           }
                           actions_ = std::move(actions);
                           classType_ = std::move(classType);
                           classTypeId_ = classTypeId;
                           if (auto failure = LoadReported()) throw *failure;
                           saved = true;
                         });
}

void BillActions::SetBillActions(const Dictionary& actions) noexcept {
  Operation({.report = L"TavioClassBillAction.BillActions : SetBillActions"}, [&] {
    actions_ = actions;
    if (!actions_ || actions_.Count() == 0) return;
    const Dictionary first(*actions_.At(1).value);
    classTypeId_ = first.Get(L"FClassTypeID"_key)->ToInt32();
  });
}

}  // namespace tavio
