#include <gtest/gtest.h>

#include "foundation/MParse.h"

namespace tavio {
namespace {

TEST(MParseTest, PairsUpToTheFirstEmptyName) {
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
      {u"ConnectString={Provider=x;Server=y};UserID=16394;",
       {{u"ConnectString", u"Provider=x;Server=y"}, {u"UserID", u"16394"}}},
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

TEST(MParseTest, HeadIsTakenAtTheFirstDelimiter) {
  const struct {
    TextView text, head, rest;
  } cases[] = {{u"a;b;c", u"a", u"b;c"}, {u"abc", u"abc", u""}, {u";", u"", u""}, {u"", u"", u""}, {u"a;", u"a", u""}};
  for (const auto& c : cases) {
    TextView text = c.text;
    EXPECT_EQ(SplitHead(text, u';'), c.head);
    EXPECT_EQ(text, c.rest);
  }
}

}  // namespace
}  // namespace tavio
