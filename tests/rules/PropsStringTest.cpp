#include <gtest/gtest.h>

#include "foundation/PropsString.h"

namespace tavio {
namespace {

TEST(PropsStringTest, FindsTheFirstPair) {
  const struct {
    TextView props;
    TextView name;
    TextView value;
  } cases[] = {
      {u"", u"LANGUAGE", u""},
      {u"LANGUAGE=CHS;USERNAME=ANN", u"LANGUAGE", u"CHS"},
      {u"LANGUAGE=CHS;USERNAME=ANN", u"USERNAME", u"ANN"},
      {u"LANGUAGE=CHS;USERNAME=ANN;", u"USERID", u""},
      {u"UILANGUAGE=X;LANGUAGE=Y;", u"LANGUAGE", u"X"},
      {u"CONNECTSTRING={A=1,B=2};", u"CONNECTSTRING", u"{A=1,B=2}"},
      {u"LANGUAGE;LANGUAGE=", u"LANGUAGE", u""},
      {u"A;B=C;", u"A;B", u""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FindPropValue(c.props, c.name), c.value) << "case " << &c - cases;
  }
}

}  // namespace
}  // namespace tavio
