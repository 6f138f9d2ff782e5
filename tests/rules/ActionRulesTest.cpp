#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "actions/ActionCode.h"
#include "actions/RightMasks.h"
#include "catalogues/BillTypes.h"

namespace tavio::test {
namespace {

using enum ActionCodeFault;

TEST(ActionCode, NamesTheFirstFault) {
  const struct {
    ActionCodeFault fault;
    std::vector<const char16_t*> codes;
  } cases[] = {
      {kEmpty, {u""}},
      // Neither are U+017F and U+0131 letters, which are an S and an I in upper case, nor is the wide blank a blank.
      {kNoLetterFirst, {u" ", u" AB", u"1AB", u"_AB", u"@B", u"[B", u"`b", u"{b", u"保存", u"ſave", u"ıtem"}},
      {kBlankInside, {u"A B", u"A_ B", u"A B "}},
      {kOtherSign, {u"A_B", u"A-B", u"AB/", u"AB:", u"A保", u"Aſ", u"Aı", u"A\t", u"A\u3000"}},
      {kNone, {u"ab12", u"AZaz09", u"AB  ", u"A"}},
  };
  for (const auto& [fault, codes] : cases) {
    for (const auto* code : codes) EXPECT_EQ(CheckActionCode(code), fault) << ::testing::PrintToString(code);
  }
}

TEST(BillTypes, AreBitsOf31) {
  using Limits = std::numeric_limits<std::int32_t>;
  for (const auto& [billType, mask] :
       {std::pair{Limits::min() + 1, 0}, {-1, 0}, {0, 0}, {1, 1}, {2, 2}, {31, 1 << 30}}) {
    EXPECT_EQ(BillTypeMask(billType), mask) << billType;
  }
  for (const auto billType : {Limits::min(), 32, 33, Limits::max()}) {
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
