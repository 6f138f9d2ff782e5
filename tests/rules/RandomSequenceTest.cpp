#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "delivery/RandomSequence.h"

namespace tavio {
namespace {

// Worked out by hand from the generator's constants; a second process starts alike.
TEST(RandomSequenceTest, EveryProcessStartsAlike) {
  RandomSequence numbers, fileNumbers;
  for (const auto& [state, fileNumber] :
       {std::pair{11837123, 14112}, {8949370, 10669}, {9722709, 11591}, {4858052, 5792}}) {
    EXPECT_EQ(numbers.Next() * 0x1000000, state);
    EXPECT_EQ(fileNumbers.NextFileNumber(), fileNumber);
  }
}

TEST(RandomSequenceTest, FileNumbersFillTheirRange) {
  RandomSequence sequence;
  std::vector<bool> seen(20002);
  for (int i = 0; i < 1 << 20; ++i) {
    const auto number = sequence.NextFileNumber();
    ASSERT_TRUE(number >= 1 && number <= 20001) << number;
    seen[static_cast<std::size_t>(number)] = true;
  }
  EXPECT_EQ(std::count(seen.begin(), seen.end(), true), 20001);
}

}  // namespace
}  // namespace tavio
