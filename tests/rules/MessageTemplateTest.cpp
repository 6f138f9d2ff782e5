#include <gtest/gtest.h>

#include <deque>

#include "message/MessageTemplate.h"

namespace tavio::test {
namespace {

Text Angled(TextView text, bool settles) {
  Rewriting rewriting(text);
  std::deque<Text> lent;
  for (int i = 0; rewriting.NextName(); ++i) {
    const auto& written = lent.emplace_back(u'<' + Text(rewriting.Name()) + u'>');
    settles&& i % 2 ? rewriting.Write(Text(written)) : rewriting.Lend(written);
  }
  return rewriting.ToText();
}

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
    EXPECT_EQ(Angled(c.text, false), c.rewritten) << c.name;
    EXPECT_EQ(Angled(c.text, true), c.rewritten) << c.name;
  }
}

}  // namespace
}  // namespace tavio::test
