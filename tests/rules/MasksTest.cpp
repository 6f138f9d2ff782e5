#include <gtest/gtest.h>

#include <vector>

#include "actions/RightMasks.h"
#include "foundation/BillTypes.h"

namespace tavio::test {
namespace {

TEST(BillTypes, AreBitsOf31) {
  constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
  const std::vector<std::pair<std::int32_t, std::int32_t>> kMasks = {{kLowest + 1, 0}, {-1, 0}, {0, 0},
                                                                     {1, 1},           {2, 2},  {31, 1 << 30}};
  for (const auto& [billType, mask] : kMasks) EXPECT_EQ(BillTypeMask(billType), mask) << billType;
  for (const auto billType : {kLowest, 32, 33, std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_THROW(BillTypeMask(billType), std::overflow_error) << billType;
  }
}

TEST(RightMasks, AreTriedUpwardsToTheFirstFree) {
  std::vector<std::int32_t> tried;
  const auto freeFrom = [&](std::int32_t lowest) {
    tried.clear();
    return FirstFreeRightMask([&](std::int32_t mask) {
      tried.push_back(mask);
      return lowest != 0 && mask >= lowest;
    });
  };
  EXPECT_EQ(freeFrom(4), 4);
  EXPECT_EQ(tried, (std::vector<std::int32_t>{1, 2, 4}));
  EXPECT_EQ(freeFrom(1 << 30), 1 << 30);
  EXPECT_EQ(freeFrom(0), 0);
  EXPECT_EQ(tried.size(), 31u);
}

}  // namespace
}  // namespace tavio::test
