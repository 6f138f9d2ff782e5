#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "actions/ActionCode.h"
#include "actions/ActionStatus.h"
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

TEST(ActionStatus, EditsReviveAndRemovalsKeepOtherFlags) {
  constexpr std::int32_t kOther = 1 << 20 | std::numeric_limits<std::int32_t>::min();
  const struct {
    const char* name;
    std::int32_t status, edited, removed;
    bool deleted;
  } cases[] = {
      {"loaded, untouched", 0, 2, 4, false},
      {"new", 1, 3, 5, false},
      {"modified", 2, 2, 6, false},
      {"new, then modified", 3, 3, 7, false},
      {"removed", 4, 2, 4, true},
      {"new, then removed", 5, 3, 5, true},
      {"modified, then removed", 6, 2, 6, true},
      {"all three", 7, 3, 7, true},
      {"flags of others", kOther, kOther | 2, kOther | 4, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(StatusAfterEdit(c.status), c.edited) << c.name;
    EXPECT_EQ(StatusAfterRemoval(c.status), c.removed) << c.name;
    EXPECT_EQ(IsDeleted(c.status), c.deleted) << c.name;
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

}  // namespace
}  // namespace tavio::test
