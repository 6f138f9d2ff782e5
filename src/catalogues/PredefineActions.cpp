#include "catalogues/PredefineActions.h"

#include "catalogues/BillTypes.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Component.h"

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
    for (std::int32_t i = 1, count = catalogue_.Count(); i <= count; ++i) {
      const auto action = catalogue_.Record(i);
      if ((action.Get(L"FBillType"_key)->ToInt32() & mask) != 0) actions.Add(action.Clone());
    }
  });
}

bool PredefineActions::LookupRightMask(std::int32_t mask) noexcept {
  return Operation<bool>(Labels{}, [&](bool& used) {
    Load();
    for (std::int32_t i = 1, count = catalogue_.Count(); !used && i <= count; ++i) {
      used = catalogue_.Record(i).GetValue(L"FRightMask"_key, Value(0))->ToInt32() == mask;
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
  for (std::int32_t i = 1, count = catalogue_.Count(); i <= count; ++i) {
    auto action = catalogue_.Record(i);
    if (action.GetValue(L"FCode"_key)->EqualsText(code)) return action;
  }
  return Dictionary();
}

}  // namespace tavio
