#include <gtest/gtest.h>

#include "message/MessageTemplate.h"

namespace tavio::test {
namespace {

TEST(MessageTemplate, NamesReachFromABracketToTheFirstClosingOne) {
  const struct {
    TextView text, rewritten;
  } cases[] = {
      {u"", u""},
      {u"plain ] text", u"plain ] text"},
      {u"[a]", u"<a>"},
      {u"[]", u"<>"},
      {u"x[a]y[ b ]z", u"x<a>y< b >z"},
      {u"[a][b]", u"<a><b>"},
      {u"[a[b]", u"<a[b>"},
      {u"[a]]b[", u"<a>]b["},
      {u"]x[", u"]x["},
      {u"a[b", u"a[b"},
      {u"[a]b[c[d", u"<a>b[c[d"},
  };
  for (const auto& c : cases) {
    const auto angled = [](TextView name, Text& result) { result += u'<' + Text(name) + u'>'; };
    EXPECT_EQ(RewriteBrackets(c.text, angled), c.rewritten) << "case " << &c - cases;
    EXPECT_EQ(RewriteBrackets(c.text, AppendBracketed), c.text) << "case " << &c - cases;
  }
}

}  // namespace
}  // namespace tavio::test
