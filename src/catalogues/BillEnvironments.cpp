#include "catalogues/BillEnvironments.h"

#include <vector>

#include "catalogues/BillTypes.h"
#include "catalogues/ScenarioOrder.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"

namespace tavio {
namespace {

template <class Package>
Package AskClassInfo(const wchar_t* member) {
  return Package(Component::Create(L"TavioMClass.ClassInfo").Call(member, GetPropsString()));
}

std::int32_t MaskOf(const Dictionary& record) { return NumberAt(record, L"FMask"_key); }

// A database null is no ID, not even 0.
bool HasId(const Dictionary& record, std::int32_t id) {
  const auto stored = record.Get(L"FID"_key);
  return !stored->IsNull() && stored->ToInt32() == id;
}

bool SharesBit(const Dictionary& record, std::int32_t mask) { return (MaskOf(record) & mask) != 0; }

// The mask by which a record is going to be known.
std::int32_t RequiredMaskOf(const Dictionary& record) {
  const auto mask = record.Get(L"FMask"_key);
  if (mask->IsEmpty()) throw Error::MissingKey(L"FMask");
  return mask->OrEmpty().ToInt32();
}

template <class Taken>
Dictionary Select(const Dictionary& set, const Taken& taken) {
  auto selected = Dictionary::New();
  for (const auto& entry : Entries(set)) {
    const Key key(entry.KeyView());
    const auto record = entry.Record();
    if (taken(record)) selected.Set(key, record);
  }
  return selected;
}

template <class Taken>
Vector Select(const Vector& list, const Taken& taken) {
  auto selected = Vector::New();
  for (const auto& record : Records(list)) {
    if (taken(record)) selected.Add(record);
  }
  return selected;
}

struct Scenarios {
  std::vector<Dictionary> records;
  std::vector<std::int32_t> masks;
};

Scenarios Read(const Dictionary& set) {
  Scenarios scenarios;
  for (const auto& entry : Entries(set)) {
    scenarios.records.push_back(entry.Record());
    scenarios.masks.push_back(MaskOf(scenarios.records.back()));
  }
  return scenarios;
}

void WriteParents(const Scenarios& scenarios, const std::vector<ScenarioIndex>& parents) {
  for (std::size_t i = 0; i < parents.size(); ++i) {
    const std::int32_t parent = parents[i] == kNoScenario ? 0 : scenarios.masks[parents[i]];
    scenarios.records[i].Set(L"Parent"_key, Value(parent));
  }
}

void WriteLevels(const Scenarios& scenarios, const std::vector<std::int32_t>& levels) {
  for (std::size_t i = 0; i < levels.size(); ++i) {
    if (levels[i] != kNoLevel) scenarios.records[i].Set(L"Level"_key, Value(levels[i]));
  }
}

}  // namespace

Dictionary BillEnvironments::GetList(std::int32_t mask, std::int32_t id) noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillEnvironments : GetList "};
  const auto taken = [&](const Dictionary& scenario) { return HasId(scenario, id) || SharesBit(scenario, mask); };
  return Operation<Dictionary>(kLabels, [&](Dictionary& list) {
    LoadSet();
    list = set_ && (mask != 0 || id != 0) ? Select(set_, taken) : set_;
  });
}

Vector BillEnvironments::GetSortList(std::int32_t mask, std::int32_t id) noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillEnvironments : GetSortList "};
  const auto taken = [&](const Dictionary& scenario) {
    return HasId(scenario, id) || (SharesBit(scenario, mask) && MaskOf(scenario) <= mask);
  };
  return Operation<Vector>(kLabels, [&](Vector& list) {
    LoadList();
    list = sorted_ && (mask != 0 || id != 0) ? Select(sorted_, taken) : sorted_;
  });
}

Vector BillEnvironments::GetSortListMsg(std::int32_t mask, std::int32_t id) noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillEnvironments : GetSortListMsg "};
  const auto taken = [&](const Dictionary& scenario) { return HasId(scenario, id) || SharesBit(scenario, mask); };
  return Operation<Vector>(kLabels, [&](Vector& list) {
    LoadList();
    list = sorted_ && (mask != 0 || id != 0) ? Select(sorted_, taken) : sorted_;
  });
}

Dictionary BillEnvironments::GetBillTypeList(std::int32_t billType) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillEnvironments.GetBillTypeList",
                           .report = L"TavioClassBillAction.BillEnvironments : GetBillTypeList ",
                           .outcome = 0};
  return Operation<Dictionary>(kLabels, [&](Dictionary& list) {
    LoadSet();
    const auto mask = BillTypeMask(billType);
    list = Select(set_, [&](const Dictionary& scenario) { return (NumberAt(scenario, L"FBillType"_key) & mask) != 0; });
  });
}

Dictionary BillEnvironments::GetItem(std::int32_t mask, std::int32_t id) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillEnvironments.GetItem",
                           .report = L"TavioClassBillAction.BillEnvironments : GetItem "};
  return Operation<Dictionary>(kLabels, [&](Dictionary& scenario) {
    LoadSet();
    if (mask != 0) {
      if (const auto found = set_.Find(Key(mask))) scenario = Dictionary(**found);
    } else if (id != 0) {
      scenario = ItemWithId(id);
    }
  });
}

Dictionary BillEnvironments::GetClassMenu() noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillEnvironments : GetClassMenu "};
  return Operation<Dictionary>(kLabels, [](Dictionary& menu) { menu = AskClassInfo<Dictionary>(L"GetClassMenu"); });
}

void BillEnvironments::Initialize() noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillEnvironments : Initialize "};
  Operation(kLabels, [&] {
    source_ = AskClassInfo<Vector>(L"GetBillEnvironments");
    SortList();
  });
}

// What is built before a failure stays.
void BillEnvironments::SortList() noexcept {
  constexpr Labels kLabels{.report = L"TavioClassBillAction.BillEnvironments : SortList "};
  if (!source_) return;
  Operation(kLabels, [&] {
    CollectSet();
    const auto scenarios = Read(set_);
    const auto parents = ScenarioParents(scenarios.masks);
    WriteParents(scenarios, parents);
    const auto order = OrderScenarios(parents);
    WriteLevels(scenarios, order.levels);
    const auto sorted = Vector::New();
    sorted_ = sorted;
    for (const auto scenario : order.sequence) sorted.Add(scenarios.records[scenario]);
  });
}

void BillEnvironments::CollectSet() {
  const auto set = Dictionary::New();
  set_ = set;
  for (const auto& record : RecordsIn16Bits(source_)) set.Set(Key(RequiredMaskOf(record)), record);
}

void BillEnvironments::LoadSet() noexcept {
  if (!set_) Initialize();
}

void BillEnvironments::LoadList() noexcept {
  if (!sorted_) Initialize();
}

Dictionary BillEnvironments::ItemWithId(std::int32_t id) const {
  for (const auto& entry : EntriesIn16Bits(set_)) {
    auto scenario = entry.Record();
    if (HasId(scenario, id)) return scenario;
  }
  return Dictionary();
}

}  // namespace tavio
