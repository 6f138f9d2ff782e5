#include <gtest/gtest.h>

#include <random>

#include "catalogues/ScenarioOrder.h"
#include "tests/rules/WrittenScenarioOrder.h"

namespace tavio::test {
namespace {

using Masks = std::vector<std::int32_t>;

struct Listed {
  Masks masks;   // in the order of the list
  Masks levels;  // beside them
};

Listed List(const Masks& masks) {
  const auto order = OrderScenarios(ScenarioParents(masks));
  Listed listed;
  for (const auto scenario : order.sequence) {
    listed.masks.push_back(masks[scenario]);
    listed.levels.push_back(order.levels[scenario]);
  }
  return listed;
}

TEST(ScenarioOrder, ListsSmallTrees) {
  const struct {
    const char* what;
    Masks set, listed, levels;
  } cases[] = {
      {"no scenario", {}, {}, {}},
      {"a tree, root last: the sibling that moved up is placed later, so before",
       {1, 2, 3, 7},
       {7, 3, 2, 1},
       {0, 1, 2, 2}},
      {"no shared bit: roots, every second one skipped", {1, 2, 4, 8}, {1, 4, 2, 8}, {0, 0, 0, 0}},
      {"a negative mask is smaller than those it shares bits with", {-1, 5, 4}, {5, 4, -1}, {0, 1, 2}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const auto listed = List(c.set);
    EXPECT_EQ(listed.masks, c.listed);
    EXPECT_EQ(listed.levels, c.levels);
  }
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
  for (int run = 0; run < 3000; ++run) {
    const auto masks = RandomSet(random);
    const auto parents = ScenarioParents(masks);
    ASSERT_EQ(parents, WrittenParents(masks)) << ::testing::PrintToString(masks);
    const auto order = OrderScenarios(parents);
    const auto written = WrittenOrder(parents);
    ASSERT_EQ(order.sequence, written.sequence) << ::testing::PrintToString(masks);
    ASSERT_EQ(order.levels, written.levels) << ::testing::PrintToString(masks);
  }
}

}  // namespace
}  // namespace tavio::test
