#include "actions/BillActions.h"

#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"

namespace tavio {

void BillActions::RequireBinding(TextView operation) const {
  if (classTypeId_ != 0) return;
  throw Error::NotBound(L"TavioClassBillAction.BillActions." + Text(operation), L"请先设置本组件关联的业务对象!");
}

void BillActions::ClassType(Dictionary value) {
  classType_ = value;
  if (!value) return;
  const auto id = value.Find(L"FID"_key);
  if (id && !(*id)->IsNull()) classTypeId_ = (*id)->ToInt32();
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
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.Initialize 业务对象操作初始化",
                           .report = L"TavioClassBillAction.BillActions : Initialize"};
  std::optional<Error> failure;
  Operation(kLabels, [&] {
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
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.Save 操作集合保存",
                           .report = L"TavioClassBillAction.BillActions : Save"};
  return Operation<bool>(kLabels, [&](bool& saved) {
    AssignRightMask();
    WriteToMiddleTier();
    if (auto failure = LoadReported()) throw *failure;
    saved = true;
  });
}

// Keeps what the middle tier leaves in its by-reference arguments.
void BillActions::WriteToMiddleTier() {
  std::int32_t classTypeId = classTypeId_;
  Dictionary actions = actions_;
  Dictionary classType = classType_;
  const auto update = Component::Create(L"TavioMClass.ClassDefineUpdate");
  update.Call(L"SaveBillActions", GetPropsString(), ByRef(classTypeId), ByRef(actions), ByRef(classType));
  actions_ = actions;
  classType_ = classType;
  classTypeId_ = classTypeId;
}

void BillActions::SetBillActions(const Dictionary& actions) noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillActions : SetBillActions"};
  Operation(kLabels, [&] {
    actions_ = actions;
    if (!actions || actions.Count() == 0) return;
    classTypeId_ = actions.At(1).Record().Get(L"FClassTypeID"_key)->ToInt32();
  });
}

}  // namespace tavio
