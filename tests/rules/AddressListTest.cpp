#include <gtest/gtest.h>

#include <algorithm>

#include "delivery/AddressList.h"
#include "delivery/MailHeader.h"

namespace tavio::testing {
namespace {

using Addresses = std::vector<TextView>;

Text Upper(TextView text) {
  Text upper(text);
  std::transform(text.begin(), text.end(), upper.begin(),
                 [](Char unit) { return unit >= u'a' && unit <= u'z' ? static_cast<Char>(unit - 32) : unit; });
  return upper;
}

Text Joined(const std::vector<TextView>& addresses, Char separator) {
  AddressList list(separator);
  for (const auto address : addresses) list.Add(address, Upper(address));
  return list.Joined();
}

TEST(AddressListTest, DropsWhatTheListContains) {
  const struct {
    Addresses addresses;
    TextView joined;
  } cases[] = {
      {{u"", u""}, u""},
      {{u"a@x", u"", u"b@x"}, u"a@x;b@x"},
      {{u"Ann@x", u"aNN@X", u"b@x"}, u"Ann@x;b@x"},
      {{u"joann@x.com", u"ann@x", u"Ann@x.com"}, u"joann@x.com"},
      {{u"a@x", u"b@x", u"c@x", u"A@X;b@x", u"b@x;C", u"c@x;a@x"}, u"a@x;b@x;c@x;c@x;a@x"},
  };
  for (const auto& c : cases) EXPECT_EQ(Joined(c.addresses, u';'), c.joined) << "case " << &c - cases;
  EXPECT_EQ(Joined({u"13800000001", u"138", u"13800000002"}, u','), u"13800000001,13800000002");
}

TEST(MailHeaderTest, LineEndsAndNulDoNotFit) {
  EXPECT_TRUE(FitsHeader(u"张 伟\t<a@x>"));
  for (const TextView text : {TextView(u"\r"), TextView(u"a\nBcc: b"), TextView(u"\0b", 2)})
    EXPECT_FALSE(FitsHeader(text));
  EXPECT_EQ(FoldedForHeader(u"a\r\nBcc: b"), u"a  Bcc: b");
}

TEST(MailHeaderTest, OnlyWholeLineEndsBreakLines) {
  EXPECT_EQ(WithHtmlLineBreaks(u"a\r\n\r\nb\r\n"), u"a<br><br>b<br>");
  EXPECT_EQ(WithHtmlLineBreaks(u"a\nb\r\r\n<c>"), u"a\nb\r<br><c>");
}

}  // namespace
}  // namespace tavio::testing
