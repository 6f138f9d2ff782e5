#include "actions/BillActions.h"
#include "foundation/environment/Operation.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"

namespace tavio {
namespace {

StoredValue Required(StoredValue code) {
  if (code->IsEmpty()) throw Error::MissingKey(L"FCode");
  return code;
}

// The greatest scenario mask among the messages that shares a bit with `mask`; 0 if none does.
std::int32_t ChooseScenario(const Dictionary& messages, std::int32_t mask) {
  std::int32_t chosen = 0;
  for (const auto& entry : EntriesIn16Bits(messages)) {
    const auto scenario = NumberAt(entry.Record(), L"FEnvironment"_key, 0);
    if ((mask & scenario) != 0 && scenario > chosen) chosen = scenario;
  }
  return chosen;
}

}  // namespace

// By the action's own FCode, not by the collection's key: hosts store actions under other keys. An action whose code is
// a database null has none that could be asked for.
std::optional<BillActions::Found> BillActions::Find(TextView code) const {
  const Key field = L"FCode"_key;
  for (const auto& entry : EntriesIn16BitsThatMayHold(actions_, field, code)) {
    const auto stored = Required(entry.Field(field));
    if (stored->IsNull() || !stored->EqualsText(code)) continue;
    return Found{Text(entry.KeyView()), entry.Record()};
  }
  return std::nullopt;
}

// A search that fails is reported as LookUp's, and finds nothing.
std::optional<BillActions::Found> BillActions::FindReported(TextView code) const noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillActions : Lookup "};
  if (!actions_) return std::nullopt;
  return Operation<std::optional<Found>>(kLabels, [&](std::optional<Found>& found) { found = Find(code); });
}

Dictionary BillActions::Item(TextView code) const noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillActions : Item "};
  if (!actions_) return {};
  return Operation<Dictionary>(kLabels, [&](Dictionary& result) {
    if (const auto found = Find(code)) result = found->action.Clone();
  });
}

bool BillActions::LookUp(TextView code) const noexcept { return FindReported(code).has_value(); }

Dictionary BillActions::GetEnvironmentItems(std::int32_t mask) const noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillActions : GetEnvironmentItems "};
  if (!actions_) return {};
  return Operation<Dictionary>(kLabels, [&](Dictionary& result) {
    const auto matching = Dictionary::New();
    for (const auto& entry : Entries(actions_)) {
      if ((mask & entry.Field(L"FEnvironment"_key)->OrEmpty().ToInt32()) == 0) continue;
      const auto action = entry.Record();
      const auto code = Required(action.Get(L"FCode"_key));
      if (code->IsNull()) continue;  // nothing to be known by
      const Key key = KeyOf(*code);
      matching.Set(key, action.Clone());
    }
    result = matching.Clone();
  });
}

// Its failures carry the label of Item, and its log entry is closed by one more begin entry: hosts and log readers know
// both so.
Dictionary BillActions::GetMessage(TextView code, std::int32_t mask) const noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.GetMessage",
                           .report = L"TavioClassBillAction.BillActions : Item ",
                           .closesWithBegin = true};
  return Operation<Dictionary>(kLabels, [&](Dictionary& result) {
    if (!actions_) return;
    const auto found = Find(code);
    if (!found) return;
    const auto messages = PackageAt(found->action, L"Messages"_key);
    if (!messages) return;
    const auto scenario = ChooseScenario(messages, mask);
    if (scenario == 0) return;
    const auto entry = PackageAt(messages, Key(scenario));
    if (entry) result = PackageAt(entry, L"Message"_key);
  });
}

}  // namespace tavio
