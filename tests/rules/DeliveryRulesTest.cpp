#include <gtest/gtest.h>

#include <vector>

#include "delivery/AddressList.h"
#include "delivery/MailHeader.h"
#include "delivery/RandomSequence.h"

namespace tavio::test {
namespace {

TEST(AddressList, DropsWhatTheListContains) {
  const struct {
    Char separator;
    std::vector<TextView> addresses;
    TextView joined;
  } cases[] = {
      {u';', {u"", u""}, u""},
      {u';', {u"a@x", u"", u"b@x"}, u"a@x;b@x"},
      {u';', {u"Ann@x", u"aNN@X", u"b@x"}, u"Ann@x;b@x"},
      {u';', {u"joann@x.com", u"ann@x", u"Ann@x.com"}, u"joann@x.com"},
      {u';', {u"a@x", u"b@x", u"c@x", u"A@X;b@x", u"b@x;C", u"c@x;a@x"}, u"a@x;b@x;c@x;c@x;a@x"},
      {u',', {u"13800000001", u"138", u"13800000002"}, u"13800000001,13800000002"},
  };
  for (const auto& c : cases) {
    AddressList list(c.separator);
    for (const auto address : c.addresses) {
      Text upper(address);
      for (auto& unit : upper) unit = unit >= u'a' && unit <= u'z' ? static_cast<Char>(unit - 32) : unit;
      list.Add(address, upper);
    }
    EXPECT_EQ(list.Joined(), c.joined) << "case " << &c - cases;
  }
}

TEST(MailHeader, LineEndsAndNulDoNotFit) {
  EXPECT_TRUE(FitsHeader(u"张 伟\t<a@x>"));
  for (const TextView text : {TextView(u"\r"), TextView(u"a\nBcc: b"), TextView(u"\0b", 2)})
    EXPECT_FALSE(FitsHeader(text));
  EXPECT_EQ(FoldedForHeader(u"a\r\nBcc: b"), u"a  Bcc: b");
}

TEST(MailHeader, OnlyWholeLineEndsBreakLines) {
  EXPECT_EQ(WithHtmlLineBreaks(u"a\r\n\r\nb\r\n"), u"a<br><br>b<br>");
  EXPECT_EQ(WithHtmlLineBreaks(u"a\nb\r\r\n<c>"), u"a\nb\r<br><c>");
}

// Worked out by hand from the generator's constants; a second process starts alike.
TEST(RandomSequence, EveryProcessStartsAlike) {
  RandomSequence numbers, fileNumbers;
  for (const auto& [state, fileNumber] :
       {std::pair{11837123, 14112}, {8949370, 10669}, {9722709, 11591}, {4858052, 5792}}) {
    EXPECT_EQ(numbers.Next() * 0x1000000, state);
    EXPECT_EQ(fileNumbers.NextFileNumber(), fileNumber);
  }
}

}  // namespace
}  // namespace tavio::test
