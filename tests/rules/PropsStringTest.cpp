#include <gtest/gtest.h>

#include "foundation/values/MParse.h"
#include "foundation/values/PropsString.h"

namespace tavio::test {
namespace {

TEST(PropsString, FindsTheFirstPair) {
  const struct {
    TextView props, name, value;
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
  for (const auto& c : cases) EXPECT_EQ(FindPropValue(c.props, c.name), c.value) << "case " << &c - cases;
}

// The second reader of the same string.
TEST(MParse, PairsUpToTheFirstEmptyName) {
  const struct {
    TextView props;
    std::vector<PropPair> pairs;
  } cases[] = {
      {u"", {}},
      {u"  ", {}},
      {u"=x;UserID=1;", {}},
      {u";UserID=1;", {{u";UserID", u"1"}}},
      {u"Language=chs;UserID=1", {{u"Language", u"chs"}, {u"UserID", u"1"}}},
      {u" UserID = 1 ; Language =  ; ", {{u"UserID", u"1"}, {u"Language", u""}}},
      {u"ConnectString={Provider=x;Server=y};UserID=1;",
       {{u"ConnectString", u"Provider=x;Server=y"}, {u"UserID", u"1"}}},
      {u"a= { b } lost ;c=d", {{u"a", u"b"}, {u"c", u"d"}}},
      {u"a={b;c=d", {{u"a", u"b;c=d"}}},
      {u"a={}b=c;d=e", {{u"a", u""}, {u"d", u"e"}}},
      {u"a={{b};c};d=e", {{u"a", u"{b"}, {u"c};d", u"e"}}},
      {u"a=b={c;d};e=f", {{u"a", u"b={c"}, {u"d};e", u"f"}}},
      {u"a=1;a=2", {{u"a", u"1"}, {u"a", u"2"}}},
      {u"a=1; =2;b=3", {{u"a", u"1"}}},
      {u"UserID", {{u"UserID", u""}}},
  };
  for (const auto& c : cases) EXPECT_EQ(ParsePairs(c.props), c.pairs) << "case " << &c - cases;
}

}  // namespace
}  // namespace tavio::test
