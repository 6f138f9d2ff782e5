#include <optional>
#include <string>

#include "actions/ActionStatus.h"
#include "actions/BillActions.h"
#include "actions/RightMasks.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/RecordSet.h"

namespace tavio {
namespace {

constexpr std::int32_t kNoMask = 0;

std::int32_t NumberAt(const Dictionary& record, const Key& key) {
  return record.GetValue(key, Value(kNoMask))->ToInt32();
}

void CopyWherePresent(const Dictionary& from, const Key& key, const Dictionary& to) {
  const auto held = from.GetValue(key);
  if (!held->IsEmpty()) to.Set(key, *held);
}

// The masks that an action may not be given: those of the catalogue, of the database, and of the same save.
class TakenMasks {
 public:
  explicit TakenMasks(const Component& catalogue)
      : catalogue_(catalogue), classInfo_(Component::Create(L"TavioMClass.ClassInfo")) {}

  bool Contains(std::int32_t mask, std::int32_t objectId) const {
    return (givenNow_ & mask) != 0 || catalogue_.Call(L"LookupRightMask", mask).ToBool() || IsStored(mask, objectId);
  }
  void Give(std::int32_t mask) noexcept { givenNow_ |= mask; }

 private:
  bool IsStored(std::int32_t mask, std::int32_t objectId) const {
    const Text sql = L"select 1 from t_ObjectAccessType where fobjectid=" + std::to_wstring(objectId) + L" and (" +
                     std::to_wstring(mask) + L" & faccessuse <> 0)";
    return !RecordSet(classInfo_.Call(L"GetData", GetPropsString(), sql)).EndReached();
  }

  const Component& catalogue_;
  Component classInfo_;
  std::int32_t givenNow_ = 0;
};

// Whether the catalogue knows the action; its masks are then the action's.
bool TakeFromCatalogue(const Component& catalogue, const Dictionary& action) {
  if (!action.GetValue(L"FIsPredefine"_key, Value(false))->ToBool()) return false;
  const Dictionary known(catalogue.Call(L"Item", action.GetValue(L"FCode"_key)->ToText()));
  if (!known) return false;
  CopyWherePresent(known, L"FRightMask"_key, action);
  CopyWherePresent(known, L"FRightUseMask"_key, action);
  CopyWherePresent(known, L"FRightGroupMask"_key, action);
  return true;
}

void GiveMask(const Dictionary& action, TakenMasks& taken) {
  const auto objectId = NumberAt(action, L"FObjectID"_key);
  const auto mask = FirstFreeRightMask([&](std::int32_t candidate) { return !taken.Contains(candidate, objectId); });
  action.Set(L"FRightMask"_key, Value(mask));
  if (mask == kNoMask) return;
  taken.Give(mask);
  action.Set(L"FRightControl"_key, Value(true));
  action.Set(L"FRightUseMask"_key, Value(mask));
  action.Set(L"FRightGroupMask"_key, Value(mask));
}

}  // namespace

void BillActions::AssignRightMask() noexcept {
  Operation({.report = L"TavioClassBillAction.BillActions : AssignRightMask"}, [&] {
    RequireBinding(L"AssignRightMask");
    if (!actions_ || actions_.Count() == 0) return;
    const auto catalogue = Catalogue();
    std::optional<TakenMasks> taken;
    const auto count = actions_.Count();
    for (std::int32_t i = 1; i <= count; ++i) {
      const Dictionary action(*actions_.At(i).value);
      if (IsDeleted(NumberAt(action, L"FStatus"_key)) || TakeFromCatalogue(catalogue, action)) continue;
      if (NumberAt(action, L"FRightMask"_key) != kNoMask) continue;
      if (!taken) taken.emplace(catalogue);
      GiveMask(action, *taken);
    }
  });
}

}  // namespace tavio
