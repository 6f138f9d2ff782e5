#include <map>
#include <optional>
#include <string>
#include <vector>

#include "actions/ActionStatus.h"
#include "actions/BillActions.h"
#include "actions/RightMasks.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/RecordSet.h"
#include "foundation/packages/Walk.h"

namespace tavio {
namespace {

constexpr std::int32_t kNoMask = 0;

std::int32_t MaskOf(const Dictionary& action) { return NumberAt(action, L"FRightMask"_key, kNoMask); }

// A database null is no code, not even "".
std::optional<Text> CodeOf(const Dictionary& action) {
  const auto code = action.GetValue(L"FCode"_key);
  return code->IsNull() ? std::nullopt : std::optional(code->ToText());
}

void CopyIfPresent(const Dictionary& from, const Key& key, const Dictionary& to) {
  const auto held = from.GetValue(key);
  if (!held->IsEmpty()) to.Set(key, *held);
}

// The catalogue as one assignment sees it, read once.
class KnownActions {
 public:
  explicit KnownActions(const Component& catalogue) {
    for (const auto& action : Records(Vector(catalogue.Call(L"GetList")))) {
      if (const auto code = CodeOf(action)) byCode_.try_emplace(*code, action);
      masks_ |= MaskOf(action);
    }
  }

  // The masks of the catalogue become those of an action that it knows. Answers whether it does.
  bool LendMasks(const Dictionary& action) const {
    const auto code = CodeOf(action);
    const auto known = code ? byCode_.find(*code) : byCode_.end();
    if (known == byCode_.end()) return false;
    CopyIfPresent(known->second, L"FRightMask"_key, action);
    CopyIfPresent(known->second, L"FRightUseMask"_key, action);
    CopyIfPresent(known->second, L"FRightGroupMask"_key, action);
    return true;
  }
  std::int32_t Masks() const noexcept { return masks_; }

 private:
  std::map<Text, Dictionary> byCode_;
  std::int32_t masks_ = kNoMask;
};

// The masks that an action may not be given: those that the catalogue and the live actions hold, whatever object they
// belong to, and those that the catalogue or the database reports. Each question is asked once.
class TakenMasks {
 public:
  TakenMasks(const Component& catalogue, std::int32_t held)
      : catalogue_(catalogue), classInfo_(Component::Create(L"TavioMClass.ClassInfo")), held_(held) {}

  bool Contains(std::int32_t mask, std::int32_t objectId) {
    return (held_ & mask) != 0 || IsInCatalogue(mask) || IsStored(mask, objectId);
  }
  void Give(std::int32_t mask) noexcept { held_ |= mask; }

 private:
  bool IsInCatalogue(std::int32_t mask) {
    const auto asked = inCatalogue_.find(mask);
    if (asked != inCatalogue_.end()) return asked->second;
    return inCatalogue_[mask] = catalogue_.Call(L"LookupRightMask", mask).ToBool();
  }
  bool IsStored(std::int32_t mask, std::int32_t objectId) {
    const auto asked = stored_.find({mask, objectId});
    if (asked != stored_.end()) return asked->second;
    const Text sql = L"select 1 from t_ObjectAccessType where fobjectid=" + std::to_wstring(objectId) + L" and (" +
                     std::to_wstring(mask) + L" & faccessuse <> 0)";
    return stored_[{mask, objectId}] = !RecordSet(classInfo_.Call(L"GetData", props_, sql)).EndReached();
  }

  const Component& catalogue_;
  Component classInfo_;
  const Text props_ = GetPropsString();
  std::int32_t held_;
  std::map<std::int32_t, bool> inCatalogue_;
  std::map<std::pair<std::int32_t, std::int32_t>, bool> stored_;
};

void GiveMask(const Dictionary& action, TakenMasks& taken) {
  const auto objectId = NumberAt(action, L"FObjectID"_key, 0);
  const auto mask = FirstFreeRightMask([&](std::int32_t candidate) { return !taken.Contains(candidate, objectId); });
  action.Set(L"FRightMask"_key, Value(mask));
  if (mask == kNoMask) return;
  taken.Give(mask);
  action.Set(L"FRightControl"_key, Value(true));
  action.Set(L"FRightUseMask"_key, Value(mask));
  action.Set(L"FRightGroupMask"_key, Value(mask));
}

}  // namespace

// An action that was given its mask by a save that failed is nowhere stored, so the masks of all live actions are
// collected before the first search.
void BillActions::AssignRightMask() noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillActions : AssignRightMask"};
  Operation(kLabels, [&] {
    RequireBinding(L"AssignRightMask");
    if (!actions_ || actions_.Count() == 0) return;
    const auto catalogue = Catalogue();
    std::optional<KnownActions> known;
    const auto knownActions = [&]() -> const KnownActions& { return known ? *known : known.emplace(catalogue); };
    std::int32_t held = kNoMask;
    std::vector<Dictionary> without;
    for (const auto& entry : Entries(actions_)) {
      const auto action = entry.Record();
      if (IsDeleted(NumberAt(action, L"FStatus"_key, 0))) continue;
      const bool isKnown = FlagAt(action, L"FIsPredefine"_key) && knownActions().LendMasks(action);
      held |= MaskOf(action);
      if (!isKnown && MaskOf(action) == kNoMask) without.push_back(action);
    }
    if (without.empty()) return;
    TakenMasks taken(catalogue, held | knownActions().Masks());
    for (const auto& action : without) GiveMask(action, taken);
  });
}

}  // namespace tavio
