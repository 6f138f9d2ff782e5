#include <gtest/gtest.h>

#include <sstream>

#include "development/Mime.h"
#include "development/Pdf.h"
#include "development/Utf8.h"

namespace tavio::test {
namespace {

using namespace development;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const auto end = std::min(text.find("\r\n", at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 2;
  }
  return lines;
}

Mail Sample() {
  Mail mail;
  mail.from = L"platform@example.com";
  mail.recipients = {L"a@example.com", L"b@example.com"};
  mail.subject = L"subject";
  mail.body = L"body";
  return mail;
}

// A header with its continuation lines; every header there is must be counted by its name.
std::string Header(const std::string& mail, const std::string& name) {
  const auto at = mail.find("\r\n" + name + ": ");
  if (at == std::string::npos) return "none";
  auto end = mail.find("\r\n", at + 2);
  while (mail.compare(end + 2, 1, " ") == 0) end = mail.find("\r\n", end + 2);
  return mail.substr(at + name.size() + 4, end - at - name.size() - 4);
}

TEST(DevPlatformMailTest, NothingGivenBecomesAHeaderOfItsOwn) {
  Mail mail = Sample();
  mail.subject = L"x\r\nBcc: evil@example.com";
  mail.fromName = L"n\r\nBcc: evil@example.com";
  mail.attachments.push_back({L"a\r\nBcc: b.pdf", "x"});
  EXPECT_EQ(Header(Compose(mail), "Bcc"), "none");
}

TEST(DevPlatformMailTest, NamesAndSubjectsAreEncodedWithinTheLineLimit) {
  const struct {
    Text subject;
    const wchar_t* charset;
    const char* encoded;
  } cases[] = {
      {L"plain subject", L"UTF-8", "plain subject"},
      {L"审核", L"UTF-8", "=?UTF-8?B?5a6h5qC4?="},
      {L"审核", L"gb2312", "=?GB2312?B?yfO6yw==?="},
      {L"审核😀", L"GB2312", "=?UTF-8?B?5a6h5qC48J+YgA==?="},
      {L"=?UTF-8?B?eA==?=", L"UTF-8", "=?UTF-8?B?PT9VVEYtOD9CP2VB?=\r\n =?UTF-8?B?PT0/PQ==?="},
      {Text(11, L'a') + L"😀", L"UTF-8", "=?UTF-8?B?YWFhYWFhYWFhYWE=?=\r\n =?UTF-8?B?8J+YgA==?="},
  };
  for (const auto& given : cases) {
    Mail mail = Sample();
    mail.subject = given.subject;
    mail.charset = given.charset;
    EXPECT_EQ(Header(Compose(mail), "Subject"), given.encoded);
  }
  Mail longest = Sample();
  longest.subject = longest.fromName = Text(300, L'审');
  longest.body = Text(5000, L'文');
  for (const auto& line : Lines(Compose(longest))) EXPECT_LE(line.size(), 78u) << line;
}

TEST(DevPlatformMailTest, DisplayNameIsOneName) {
  Mail mail = Sample();
  mail.fromName = L"Lee, \"Ann\"";
  EXPECT_EQ(Header(Compose(mail), "From"), "\"Lee, \\\"Ann\\\"\"\r\n <platform@example.com>");
}

TEST(DevPlatformMailTest, BytesSurviveBase64) {
  const struct {
    std::string_view bytes;
    const char* text;
  } cases[] = {{"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {{"\0\xFF\xFE", 3}, "AP/+"}};
  for (const auto& given : cases) EXPECT_EQ(Base64(given.bytes), given.text);
}

TEST(DevPlatformMailTest, AddressesThatCouldSayMoreAreRefused) {
  for (const auto* good : {L"a@example.com", L"名@example.com"}) EXPECT_TRUE(IsAddress(good)) << ToUtf8(good);
  for (const auto* bad : {L"", L"a", L"a@b>\r\nDATA", L"a@b c", L"<a@b>", L"a@b,c@d", L"a@b\x7F"})
    EXPECT_FALSE(IsAddress(bad)) << ToUtf8(bad);
  EXPECT_FALSE(IsAddress(Text(L"a@b\0c", 5)));
  EXPECT_EQ(SplitAddresses(L" a@b ;;c@d; "), (std::vector<Text>{L"a@b", L"c@d"}));
}

// Where the table says an object begins, it must begin.
TEST(DevPlatformMailTest, PdfTableFindsEveryObject) {
  for (const std::size_t lines : {0u, 1u, 40u, 41u}) {
    const std::string pdf = MakePdf(L"采购申请单", std::vector<Text>(lines, L"金额: 12😀"));
    std::istringstream table(pdf.substr(std::stoul(pdf.substr(pdf.find("startxref\n") + 10))));
    std::string word, kind;
    std::size_t first = 0, count = 0, offset = 0;
    table >> word >> first >> count >> offset >> kind >> kind;
    ASSERT_EQ(word, "xref");
    for (std::size_t i = 1; i < count; ++i) {
      table >> offset >> kind >> kind;
      const std::string head = std::to_string(i) + " 0 obj";
      EXPECT_EQ(pdf.substr(offset, head.size()), head);
    }
    const std::string pages = "/Count " + std::to_string(lines > 40 ? 2 : 1);
    EXPECT_NE(pdf.find(pages), std::string::npos) << lines;
    EXPECT_EQ(pdf.find("D83D"), std::string::npos) << "half a pair is no character";
  }
}

}  // namespace
}  // namespace tavio::test
