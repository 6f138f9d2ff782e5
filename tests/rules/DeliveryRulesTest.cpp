#include <gtest/gtest.h>

#include "delivery/AddressList.h"
#include "delivery/RandomSequence.h"

namespace tavio::test {
namespace {

// With their common ends these took minutes when each was searched in the whole list.
TEST(AddressList, CostsNoMoreForManyThatAreAlike) {
  AddressList list(u';');
  std::size_t length = 0;
  for (Char last = 1; last <= 20000; ++last) {
    const Text address = Text(50, u'A') + static_cast<Char>(last + 1000) + Text(50, u'A');
    list.Add(address, address);
    list.Add(address, address);
    length += address.size() + 1;
  }
  EXPECT_EQ(list.Joined().size(), length - 1);
}

// The first states are worked out by hand; a second process starts alike. The numbers are followed through their whole
// period in integers: of r * 20000 + 1 the fraction is cut off, and one added if it is more than half, or half and odd.
TEST(RandomSequence, EveryProcessStartsAlike) {
  constexpr std::uint64_t kPeriod = 0x1000000;
  RandomSequence numbers, fileNumbers;
  for (const auto state : {11837123, 8949370, 9722709, 4858052}) EXPECT_EQ(numbers.Next() * kPeriod, state);
  std::uint64_t state = 327680, wrong = 0;
  for (std::uint64_t i = 0; i < kPeriod; ++i) {
    state = (state * 1140671485 + 12820163) % kPeriod;
    const auto whole = state * 20000 / kPeriod + 1, fraction = state * 20000 % kPeriod * 2;
    const auto nearest = whole + (fraction > kPeriod || (fraction == kPeriod && whole % 2 == 1) ? 1 : 0);
    wrong += static_cast<std::uint64_t>(fileNumbers.NextFileNumber()) != nearest;
  }
  EXPECT_EQ(wrong, 0u);
}

}  // namespace
}  // namespace tavio::test
