#include <gtest/gtest.h>

#include <random>

#include "catalogues/ScenarioOrder.h"
#include "tests/rules/WrittenScenarioOrder.h"

namespace tavio::test {
namespace {

using Masks = std::vector<std::int32_t>;

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

void ExpectThePassesAsWritten(const Masks& masks) {
  const auto parents = ScenarioParents(masks);
  ASSERT_EQ(parents, WrittenParents(masks)) << ::testing::PrintToString(masks);
  const auto order = OrderScenarios(parents);
  const auto written = WrittenOrder(parents);
  ASSERT_EQ(order.sequence, written.sequence) << ::testing::PrintToString(masks);
  ASSERT_EQ(order.levels, written.levels) << ::testing::PrintToString(masks);
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
