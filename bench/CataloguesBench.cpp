#include <random>
#include <vector>

#include "bench/Bench.h"
#include "bench/Library.h"
#include "catalogues/ScenarioOrder.h"
#include "foundation/packages/Walk.h"
#include "tests/support/FakeComponent.h"

namespace tavio::bench {
namespace {

constexpr std::int32_t kMost = 32767;

// A fresh set each time, since one that is met again and again is learnt by the processor.
std::vector<std::int32_t> RandomMasks(std::int32_t count) {
  static std::mt19937 random(1);
  std::vector<std::int32_t> masks(static_cast<std::size_t>(count));
  for (auto& mask : masks) mask = static_cast<std::int32_t>(random() >> 1);
  return masks;
}

void MeasureOrder(Bench& bench) {
  std::vector<std::vector<std::int32_t>> many, few;
  for (int i = 0; i < 64; ++i) {
    many.push_back(RandomMasks(bench.Size(kMost)));
    few.push_back(RandomMasks(bench.Size(kMost / 10)));
  }
  std::size_t next = 0;
  const auto order = [&](const auto& sets) { return OrderScenarios(ScenarioParents(sets[next++ % sets.size()])); };
  bench.Time(
      {"the order of 32,767 scenarios", "of 3,277", 15}, [&] { return order(many); }, [&] { return order(few); });
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

std::int32_t ReadAndWriteOnce(const Vector& scenarios) {
  for (const auto& scenario : Records(scenarios)) {
    const auto mask = scenario.Get(L"FMask"_key)->ToInt32();
    scenario.Set(L"Parent"_key, Value(mask));
    scenario.Set(L"Level"_key, Value(mask));
  }
  return scenarios.Count();
}

void MeasureSortedList(Bench& bench) {
  Vector scenarios;
  test::FakeComponent classInfo(L"TavioMClass.ClassInfo"), props(L"TavioSharedProps.PropStore");
  props.On(L"GetProperty", [] { return L""; });
  classInfo.On(L"GetBillEnvironments", [&] { return scenarios; });
  const auto renew = [&] { scenarios = Scenarios(bench.Size(kMost)); };
  bench.Compare({"GetSortList of 32,767 scenarios", "reading and writing their fields once", 4},
                OnNew(renew,
                      [&] {
                        const auto environments = New<_BillEnvironments>(__uuidof(::BillEnvironments));
                        ComPtr<IDispatch> sorted;
                        Check(environments->GetSortList(0, 0, &sorted));
                        return Vector(sorted).Count();
                      }),
                OnNew(renew, [&] { return ReadAndWriteOnce(scenarios); }));
}

Vector Catalogue(std::int32_t count) {
  const auto catalogue = Vector::New();
  const Dictionary actions(Actions(count));
  for (const auto& entry : Entries(actions)) {
    entry.Record().Set(L"FBillType"_key, Value(std::int32_t{1}));
    catalogue.Add(entry.Stored());
  }
  return catalogue;
}

void MeasureDefaults(Bench& bench) {
  const auto catalogue = Catalogue(bench.Size(kMost));
  const auto predefined = New<_PredefineActions>(__uuidof(::PredefineActions));
  ComPtr<IDispatch> list = catalogue.Object();
  VARIANT_BOOL set = VARIANT_FALSE;
  Check(predefined->SetList(list.GetAddressOf(), &set));
  bench.Compare(
      {"GetDefaultActions of 32,767", "cloning each", 2},
      [&] {
        ComPtr<IDispatch> actions;
        Check(predefined->GetDefaultActions(1, &actions));
        return Vector(actions).Count();
      },
      [&] {
        const auto copies = Vector::New();
        for (const auto& action : Records(catalogue)) copies.Add(action.Clone());
        return copies.Count();
      });
}

}  // namespace

void MeasureCatalogues(Bench& bench) {
  bench.Heading("Catalogues");
  MeasureOrder(bench);
  MeasureSortedList(bench);
  MeasureDefaults(bench);
}

}  // namespace tavio::bench
