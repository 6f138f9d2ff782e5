#include <random>
#include <string>
#include <vector>

#include "bench/Bench.h"
#include "bench/Roads.h"
#include "catalogues/BillEnvironments.h"
#include "catalogues/PredefineActions.h"
#include "catalogues/ScenarioOrder.h"
#include "tests/support/FakeComponent.h"

namespace tavio::bench {
namespace {

constexpr std::int32_t kMost = 32767;
constexpr std::int32_t kTenth = 3277;

// A fresh set each time, since one that is met again and again is learnt by the processor.
std::vector<std::int32_t> RandomMasks(std::int32_t count) {
  static std::mt19937 random(1);
  std::vector<std::int32_t> masks(static_cast<std::size_t>(count));
  for (auto& mask : masks) mask = static_cast<std::int32_t>(random() >> 1);
  return masks;
}

double Ordering(std::int32_t count) {
  std::vector<std::vector<std::int32_t>> sets;
  for (int i = 0; i < 64; ++i) sets.push_back(RandomMasks(count));
  std::size_t next = 0;
  return Seconds([&] { OrderScenarios(ScenarioParents(sets[next++ % sets.size()])); });
}

Vector Scenarios(std::int32_t count) {
  const auto scenarios = Vector::New();
  for (const auto mask : RandomMasks(count)) {
    const auto scenario = Dictionary::New();
    scenario.Set(L"FMask"_key, Value(mask));
    scenario.Set(L"FID"_key, Value(mask));
    scenario.Set(L"FBillType"_key, Value(std::int32_t{1}));
    scenarios.Add(scenario);
  }
  return scenarios;
}

void ReadAndWriteOnce(const Vector& scenarios) {
  for (std::int32_t i = 1, count = scenarios.Count(); i <= count; ++i) {
    const auto scenario = scenarios.Record(i);
    const auto mask = scenario.Get(L"FMask"_key)->ToInt32();
    scenario.Set(L"Parent"_key, Value(mask));
    scenario.Set(L"Level"_key, Value(mask));
  }
}

Vector Catalogue(std::int32_t count) {
  const auto catalogue = Vector::New();
  const auto actions = Actions(count);
  for (std::int32_t i = 1; i <= count; ++i) {
    const Dictionary action(actions.At(i).Stored());
    action.Set(L"FBillType"_key, Value(std::int32_t{1}));
    catalogue.Add(action);
  }
  return catalogue;
}

Vector CloneEach(const Vector& records) {
  const auto copies = Vector::New();
  for (std::int32_t i = 1, count = records.Count(); i <= count; ++i) copies.Add(records.Record(i).Clone());
  return copies;
}

}  // namespace

void MeasureCatalogues() {
  PrintRatio("scenario order of 32,767 masks / of 3,277 masks", Ordering(kMost), Ordering(kTenth), 15);

  Vector answered;
  test::FakeComponent classInfo(L"TavioMClass.ClassInfo");
  classInfo.On(L"GetBillEnvironments", [&] { return answered.AsValue(); });
  const auto fresh = [] { return Scenarios(kMost); };
  const double reading = SecondsOnFresh(fresh, ReadAndWriteOnce);
  const double sorting = SecondsOnFresh(fresh, [&](const Vector& scenarios) {
    answered = scenarios;
    BillEnvironments().GetSortList();
  });
  PrintRatio("GetSortList, 32,767 scenarios / their fields once", sorting, reading, 4);

  const auto catalogue = Catalogue(kMost);
  PredefineActions predefined;
  predefined.SetList(catalogue.AsValue());
  const double defaults = Seconds([&] { predefined.GetDefaultActions(1); });
  PrintRatio("GetDefaultActions, 32,767 actions / cloning them", defaults, Seconds([&] { CloneEach(catalogue); }), 2);
}

}  // namespace tavio::bench
