#include <gtest/gtest.h>

#include <vector>

#include "delivery/AddressList.h"
#include "delivery/MailHeader.h"
#include "delivery/RandomSequence.h"

namespace tavio::test {
namespace {

TEST(AddressList, DropsWhatTheListContains) {
  const struct {
    const char* name;
    Char separator;
    std::vector<TextView> addresses;
    TextView joined;
  } cases[] = {
      {"empty ones alone", u';', {u"", u""}, u""},
      {"an empty one between others", u';', {u"a@x", u"", u"b@x"}, u"a@x;b@x"},
      {"other letter case", u';', {u"Ann@x", u"aNN@X", u"b@x"}, u"Ann@x;b@x"},
      {"the end and the middle of another", u';', {u"joann@x.com", u"ann@x", u"Ann@x.com"}, u"joann@x.com"},
      {"a run over a separator", u';', {u"a@x", u"b@x", u"c@x", u"A@X;b@x", u"b@x;C"}, u"a@x;b@x;c@x"},
      {"a run in another order", u';', {u"a@x", u"c@x", u"c@x;a@x"}, u"a@x;c@x;c@x;a@x"},
      {"one sign, and the separator alone", u';', {u"ab", u";", u"B", u"c", u";"}, u"ab;;;c"},
      {"longer and longer", u';', {u"aa", u"aaa", u"aaaa", u"aaa"}, u"aa;aaa;aaaa"},
      {"the beginning of a number", u',', {u"13800000001", u"138", u"13800000002"}, u"13800000001,13800000002"},
  };
  for (const auto& c : cases) {
    AddressList list(c.separator);
    for (const auto address : c.addresses) {
      Text upper(address);
      for (auto& unit : upper) unit = unit >= u'a' && unit <= u'z' ? static_cast<Char>(unit - 32) : unit;
      list.Add(address, upper);
    }
    EXPECT_EQ(list.Joined(), c.joined) << c.name;
  }
}

// With their common ends these took minutes when each was searched in the whole list.
TEST(AddressList, CostsNoMoreForManyThatAreAlike) {
  AddressList list(u';');
  std::size_t length = 0;
  for (Char last = 1; last <= 20000; ++last) {
    const Text address = Text(50, u'A') + static_cast<Char>(last + 1000) + Text(50, u'A');
    list.Add(address, address);
    list.Add(address, address);
    length += address.size() + 1;
  }
  EXPECT_EQ(list.Joined().size(), length - 1);
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

// The first states are worked out by hand; a second process starts alike. The numbers are followed through their whole
// period in integers: of r * 20000 + 1 the fraction is cut off, and one added if it is more than half, or half and odd.
TEST(RandomSequence, EveryProcessStartsAlike) {
  constexpr std::uint64_t kPeriod = 0x1000000;
  RandomSequence numbers, fileNumbers;
  for (const auto state : {11837123, 8949370, 9722709, 4858052}) EXPECT_EQ(numbers.Next() * kPeriod, state);
  std::uint64_t state = 327680, wrong = 0;
  for (std::uint64_t i = 0; i < kPeriod; ++i) {
    state = (state * 1140671485 + 12820163) % kPeriod;
    const auto whole = state * 20000 / kPeriod + 1, fraction = state * 20000 % kPeriod * 2;
    const auto nearest = whole + (fraction > kPeriod || (fraction == kPeriod && whole % 2 == 1) ? 1 : 0);
    wrong += static_cast<std::uint64_t>(fileNumbers.NextFileNumber()) != nearest;
  }
  EXPECT_EQ(wrong, 0u);
}

}  // namespace
}  // namespace tavio::test
