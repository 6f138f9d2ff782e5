#include "catalogues/PredefineActions.h"

#include "catalogues/BillTypes.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"

namespace tavio {

Dictionary PredefineActions::Item(TextView code) noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.PredefineActions : Item"};
  return Operation<Dictionary>(kLabels, [&](Dictionary& action) {
    Load();
    action = Find(code);
  });
}

bool PredefineActions::SetList(const Value& vctItems) noexcept {
  Operation(Labels{}, [&] { catalogue_ = Vector(vctItems); });
  return true;
}

Vector PredefineActions::GetList() noexcept {
  Load();
  return catalogue_;
}

bool PredefineActions::LookUp(TextView code) noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.PredefineActions : LookUp"};
  return Operation<bool>(kLabels, [&](bool& found) {
    Load();
    found = static_cast<bool>(Find(code));
  });
}

Vector PredefineActions::GetDefaultActions(std::int32_t billType) noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.PredefineActions : GetDefaultActions"};
  return Operation<Vector>(kLabels, [&](Vector& actions) {
    Load();
    const auto mask = BillTypeMask(billType);
    actions = Vector::New();
    for (const auto& action : Records(catalogue_)) {
      if ((NumberAt(action, L"FBillType"_key) & mask) != 0) actions.Add(action.Clone());
    }
  });
}

bool PredefineActions::LookupRightMask(std::int32_t mask) noexcept {
  return Operation<bool>(Labels{}, [&](bool& used) {
    Load();
    for (const auto& action : Records(catalogue_)) {
      used = action.GetValue(L"FRightMask"_key, Value(0))->ToInt32() == mask;
      if (used) return;
    }
  });
}

void PredefineActions::Initialize() noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.PredefineActions : Initialize "};
  Operation(kLabels, [&] {
    catalogue_ = Vector(Component::Create(L"TavioMClass.ClassInfo").Call(L"getpredefineactions", GetPropsString()));
  });
}

void PredefineActions::Load() noexcept {
  if (!catalogue_) Initialize();
}

Dictionary PredefineActions::Find(TextView code) const {
  for (auto action : Records(catalogue_)) {
    const auto stored = action.GetValue(L"FCode"_key);
    if (!stored->IsNull() && stored->EqualsText(code)) return action;  // a database null is no code, not even ""
  }
  return Dictionary();
}

}  // namespace tavio
