#include "actions/BillActions.h"
#include "foundation/environment/Operation.h"
#include "foundation/packages/Walk.h"

namespace tavio {
namespace {

StoredValue Required(StoredValue code) {
  if (code->IsEmpty()) throw Error::MissingKey(L"FCode");
  return code;
}

// The greatest scenario mask among the messages that shares a bit with `mask`; 0 when none does.
std::int32_t ChooseScenario(const Dictionary& messages, std::int32_t mask) {
  std::int32_t chosen = 0;
  const auto count = CountedIn16Bits(messages.Count());
  for (std::int32_t i = 1; i <= count; ++i) {
    const Dictionary entry(*messages.At(i).value);
    const auto scenario = entry.GetValue(L"FEnvironment"_key, Value(std::int32_t{0}))->ToInt32();
    if ((mask & scenario) != 0 && scenario > chosen) chosen = scenario;
  }
  return chosen;
}

}  // namespace

// By the action's own FCode, not by the collection's key: hosts store actions under other keys.
std::optional<BillActions::Found> BillActions::Find(TextView code) const {
  const auto count = CountedIn16Bits(actions_.Count());
  for (std::int32_t i = 1; i <= count; ++i) {
    if (!Required(actions_.FieldAt(i, L"FCode"_key))->EqualsText(code)) continue;
    const auto entry = actions_.At(i);
    return Found{Text(entry.KeyView()), Dictionary(*entry.value)};
  }
  return std::nullopt;
}

Dictionary BillActions::Item(TextView code) const noexcept {
  if (!actions_) return {};
  return Operation<Dictionary>({.report = L"TavioClassBillAction.BillActions : Item "}, [&](Dictionary& result) {
    if (const auto found = Find(code)) result = found->action.Clone();
  });
}

bool BillActions::LookUp(TextView code) const noexcept {
  if (!actions_) return false;
  return Operation<bool>({.report = L"TavioClassBillAction.BillActions : Lookup "},
                         [&](bool& result) { result = Find(code).has_value(); });
}

Dictionary BillActions::GetEnvironmentItems(std::int32_t mask) const noexcept {
  if (!actions_) return {};
  return Operation<Dictionary>({.report = L"TavioClassBillAction.BillActions : GetEnvironmentItems "},
                               [&](Dictionary& result) {
                                 const auto matching = Dictionary::New();
                                 const auto count = actions_.Count();
                                 for (std::int32_t i = 1; i <= count; ++i) {
                                   if ((mask & actions_.FieldAt(i, L"FEnvironment"_key)->ToInt32()) == 0) continue;
                                   const Dictionary action(*actions_.At(i).value);
                                   matching.Set(KeyOf(*Required(action.Get(L"FCode"_key))), action.Clone());
                                 }
                                 result = matching.Clone();
                               });
}

// Its failures carry the label of Item, and its log entry is closed by one more begin entry: hosts and log readers know
// both so.
Dictionary BillActions::GetMessage(TextView code, std::int32_t mask) const noexcept {
  return Operation<Dictionary>({.log = L"TavioClassBillAction.BillActions.GetMessage",
                                .report = L"TavioClassBillAction.BillActions : Item ",
                                .closesWithBegin = true},
                               [&](Dictionary& result) {
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
