#include <gtest/gtest.h>

#include "foundation/values/DecimalText.h"
#include "foundation/values/MParse.h"
#include "foundation/values/PropsString.h"

namespace tavio::test {
namespace {

TEST(DecimalText, IsDigitsWithinTheRange) {
  const struct {
    const char* name;
    TextView text;
    std::optional<std::int32_t> number;
  } cases[] = {
      {"one digit", u"7", 7},
      {"negative", u"-16394", -16394},
      {"zeros in front", u"0000000012", 12},
      {"negative zero", u"-0", 0},
      {"greatest", u"2147483647", 2147483647},
      {"beyond the greatest", u"2147483648", {}},
      {"least", u"-2147483648", std::numeric_limits<std::int32_t>::min()},
      {"beyond the least", u"-2147483649", {}},
      {"more digits than any number has", u"00000000001", {}},
      {"empty", u"", {}},
      {"sign alone", u"-", {}},
      {"other signs", u"+1", {}},
      {"two signs", u"--1", {}},
      {"blank in front", u" 1", {}},
      {"blank behind", u"1 ", {}},
      {"fraction", u"1.0", {}},
      {"next to the digits", u"1:", {}},
      {"before the digits", u"1/", {}},
      {"wide digits", u"１２", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(ReadDecimal(c.text), c.number) << c.name;
}

TEST(PropsString, FindsTheFirstPair) {
  const struct {
    const char* name;
    TextView props, key, value;
  } cases[] = {
      {"no pairs", u"", u"LANGUAGE", u""},
      {"first pair", u"LANGUAGE=CHS;USERNAME=ANN", u"LANGUAGE", u"CHS"},
      {"last pair, unended", u"LANGUAGE=CHS;USERNAME=ANN", u"USERNAME", u"ANN"},
      {"absent", u"LANGUAGE=CHS;USERNAME=ANN;", u"USERID", u""},
      {"end of a longer name", u"UILANGUAGE=X;LANGUAGE=Y;", u"LANGUAGE", u"X"},
      {"value with pairs of its own", u"CONNECTSTRING={A=1,B=2};", u"CONNECTSTRING", u"{A=1,B=2}"},
      {"name without a value before it", u"LANGUAGE;LANGUAGE=", u"LANGUAGE", u""},
      {"name with a separator", u"A;B=C;", u"A;B", u""},
  };
  for (const auto& c : cases) EXPECT_EQ(FindPropValue(c.props, c.key), c.value) << c.name;
}

// The second reader of the same string.
TEST(MParse, PairsUpToTheFirstEmptyName) {
  const struct {
    const char* name;
    TextView props;
    std::vector<PropPair> pairs;
  } cases[] = {
      {"no pairs", u"", {}},
      {"blanks", u"  ", {}},
      {"empty name first", u"=x;UserID=1;", {}},
      {"separator in a name", u";UserID=1;", {{u";UserID", u"1"}}},
      {"last pair unended", u"Language=chs;UserID=1", {{u"Language", u"chs"}, {u"UserID", u"1"}}},
      {"blanks around", u" UserID = 1 ; Language =  ; ", {{u"UserID", u"1"}, {u"Language", u""}}},
      {"braces",
       u"ConnectString={Provider=x;Server=y};UserID=1;",
       {{u"ConnectString", u"Provider=x;Server=y"}, {u"UserID", u"1"}}},
      {"text behind braces", u"a= { b } lost ;c=d", {{u"a", u"b"}, {u"c", u"d"}}},
      {"braces never closed", u"a={b;c=d", {{u"a", u"b;c=d"}}},
      {"a pair behind braces", u"a={}b=c;d=e", {{u"a", u""}, {u"d", u"e"}}},
      {"braces in braces", u"a={{b};c};d=e", {{u"a", u"{b"}, {u"c};d", u"e"}}},
      {"braces later in a value", u"a=b={c;d};e=f", {{u"a", u"b={c"}, {u"d};e", u"f"}}},
      {"a name twice", u"a=1;a=2", {{u"a", u"1"}, {u"a", u"2"}}},
      {"blank name", u"a=1; =2;b=3", {{u"a", u"1"}}},
      {"name alone", u"UserID", {{u"UserID", u""}}},
  };
  for (const auto& c : cases) EXPECT_EQ(ParsePairs(c.props), c.pairs) << c.name;
}

}  // namespace
}  // namespace tavio::test
