#include <gtest/gtest.h>

#include "message/MessageTemplate.h"

namespace tavio::test {
namespace {

TEST(MessageTemplate, NamesReachFromABracketToTheFirstClosingOne) {
  const struct {
    const char* name;
    TextView text, rewritten;
  } cases[] = {
      {"empty", u"", u""},
      {"no name", u"plain ] text", u"plain ] text"},
      {"a name alone", u"[a]", u"<a>"},
      {"an empty name", u"[]", u"<>"},
      {"text around, blanks within", u"x[a]y[ b ]z", u"x<a>y< b >z"},
      {"side by side", u"[a][b]", u"<a><b>"},
      {"an opening bracket in a name", u"[a[b]", u"<a[b>"},
      {"more closing brackets", u"[a]]b[", u"<a>]b["},
      {"brackets the wrong way round", u"]x[", u"]x["},
      {"never closed", u"a[b", u"a[b"},
      {"never closed behind a name", u"[a]b[c[d", u"<a>b[c[d"},
  };
  for (const auto& c : cases) {
    const auto angled = [](TextView name, Text& result) { result += u'<' + Text(name) + u'>'; };
    EXPECT_EQ(RewriteBrackets(c.text, angled), c.rewritten) << c.name;
    EXPECT_EQ(RewriteBrackets(c.text, AppendBracketed), c.text) << c.name;
  }
}

}  // namespace
}  // namespace tavio::test
