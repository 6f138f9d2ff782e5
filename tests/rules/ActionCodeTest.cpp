#include <gtest/gtest.h>

#include "actions/ActionCode.h"

namespace tavio::test {
namespace {

using enum ActionCodeFault;

TEST(ActionCode, NamesTheFirstFault) {
  const struct {
    const char16_t* code;
    ActionCodeFault fault;
  } cases[] = {
      {u"", kEmpty},
      {u" ", kNoLetterFirst},
      {u" AB", kNoLetterFirst},
      {u"1AB", kNoLetterFirst},
      {u"_AB", kNoLetterFirst},
      {u"@B", kNoLetterFirst},
      {u"[B", kNoLetterFirst},
      {u"`b", kNoLetterFirst},
      {u"{b", kNoLetterFirst},
      {u"保存", kNoLetterFirst},
      {u"ſave", kNoLetterFirst},  // U+017F, an S in upper case
      {u"ıtem", kNoLetterFirst},  // U+0131, an I in upper case
      {u"A B", kBlankInside},
      {u"A_ B", kBlankInside},  // before the sign
      {u"A B ", kBlankInside},
      {u"A_B", kOtherSign},
      {u"A-B", kOtherSign},
      {u"AB/", kOtherSign},
      {u"AB:", kOtherSign},
      {u"A保", kOtherSign},
      {u"Aſ", kOtherSign},
      {u"Aı", kOtherSign},
      {u"A\t", kOtherSign},
      {u"A\u3000", kOtherSign},  // the wide blank is no blank
      {u"ab12", kNone},
      {u"AZaz09", kNone},
      {u"AB  ", kNone},
      {u"A", kNone},
  };
  for (const auto& c : cases) EXPECT_EQ(CheckActionCode(c.code), c.fault) << ::testing::PrintToString(c.code);
}

}  // namespace
}  // namespace tavio::test
