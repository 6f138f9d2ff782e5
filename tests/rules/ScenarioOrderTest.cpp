#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "catalogues/ScenarioOrder.h"

namespace tavio::test {
namespace {

using Masks = std::vector<std::int32_t>;
using Places = std::vector<ScenarioIndex>;

// The order of scenarios as it is promised to hosts, step by step and slow: what the library's own is held against.
Places WrittenParents(const Masks& masks) {
  Places parents;
  for (const auto mask : masks) {
    std::int32_t parentMask = 0;
    ScenarioIndex parent = kNoScenario;
    for (ScenarioIndex other = 0; other < masks.size(); ++other) {
      if (masks[other] <= mask || (mask & masks[other]) == 0) continue;
      if (parentMask != 0 && masks[other] >= parentMask) continue;
      parentMask = masks[other];
      parent = other;
    }
    parents.push_back(parent);
  }
  return parents;
}

ScenarioOrder WrittenOrder(const Places& parents) {
  ScenarioOrder order{{}, std::vector<std::int32_t>(parents.size(), kNoLevel)};
  auto& sequence = order.sequence;
  std::set<ScenarioIndex> placed;
  Places working;
  for (ScenarioIndex scenario = 0; scenario < parents.size(); ++scenario) working.push_back(scenario);
  for (bool placedAny = true; placedAny && !working.empty();) {
    placedAny = false;
    const auto count = working.size();
    for (std::size_t position = 0; position < count && position < working.size(); ++position) {
      const auto scenario = working[position];
      const auto parent = parents[scenario];
      if (placed.contains(scenario) || (parent != kNoScenario && !placed.contains(parent))) continue;
      order.levels[scenario] = parent == kNoScenario ? 0 : order.levels[parent] + 1;
      sequence.insert(parent == kNoScenario ? sequence.end() : std::ranges::find(sequence, parent) + 1, scenario);
      placed.insert(scenario);
      working.erase(working.begin() + static_cast<std::ptrdiff_t>(position));
      placedAny = true;
    }
  }
  sequence.insert(sequence.end(), working.begin(), working.end());
  return order;
}

void ExpectThePassesAsWritten(const Masks& masks) {
  const auto parents = ScenarioParents(masks);
  ASSERT_EQ(parents, WrittenParents(masks)) << ::testing::PrintToString(masks);
  const auto order = OrderScenarios(parents);
  const auto written = WrittenOrder(parents);
  ASSERT_EQ(order.sequence, written.sequence) << ::testing::PrintToString(masks);
  ASSERT_EQ(order.levels, written.levels) << ::testing::PrintToString(masks);
}

// Distinct masks in random order, zero and negative ones too; the narrower they are, the deeper their trees.
Masks RandomSet(std::mt19937& random) {
  const auto narrowed = random() % 32;
  Masks masks;
  for (auto draws = random() % 97; draws > 0; --draws) {
    const auto mask = static_cast<std::int32_t>(random()) >> narrowed;
    if (std::ranges::find(masks, mask) == masks.end()) masks.push_back(mask);
  }
  return masks;
}

TEST(ScenarioOrder, EqualsThePassesAsWritten) {
  std::mt19937 random(20240229);
  for (int run = 0; run < 3000; ++run) ExpectThePassesAsWritten(RandomSet(random));
}

TEST(ScenarioOrder, ChainsNeedAPassForEveryFewScenarios) {
  Masks rising;
  for (std::int32_t mask = 0; mask < 300; ++mask) rising.push_back(mask | 1 << 30);
  ExpectThePassesAsWritten(rising);
  ExpectThePassesAsWritten(Masks(rising.rbegin(), rising.rend()));
}

}  // namespace
}  // namespace tavio::test
