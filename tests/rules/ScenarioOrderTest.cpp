#include <gtest/gtest.h>

#include "fuzz/ScenarioModel.h"

namespace tavio::test {
namespace {

// Longer than what the fuzzer tries. Each is below the next one, so that passes upwards place one scenario each.
TEST(ScenarioOrder, ChainsNeedAPassForEveryFewScenarios) {
  std::vector<std::int32_t> rising;
  for (std::int32_t mask = 0; mask < 300; ++mask) rising.push_back(mask | 1 << 30);
  for (const auto& masks : {rising, {rising.rbegin(), rising.rend()}}) {
    const auto parents = ScenarioParents(masks);
    ASSERT_EQ(parents, WrittenParents(masks));
    const auto order = OrderScenarios(parents), written = WrittenOrder(parents);
    EXPECT_EQ(order.sequence, written.sequence);
    EXPECT_EQ(order.levels, written.levels);
  }
}

}  // namespace
}  // namespace tavio::test
