#include <gtest/gtest.h>

#include <sstream>

#include "development/Mime.h"
#include "development/Pdf.h"
#include "development/Utf8.h"

namespace tavio::test {
namespace {

using namespace development;

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
  const std::pair<Text, const char*> cases[] = {
      {L"plain subject", "plain subject"},
      {L"审核", "=?GB2312?B?yfO6yw==?="},
      {L"审核😀", "=?UTF-8?B?5a6h5qC48J+YgA==?="},
      {Text(11, L'a') + L"😀", "=?UTF-8?B?YWFhYWFhYWFhYWE=?=\r\n =?UTF-8?B?8J+YgA==?="},
  };
  Mail mail = Sample();
  mail.charset = L"GB2312";
  for (const auto& [subject, encoded] : cases) {
    mail.subject = subject;
    EXPECT_EQ(Header(Compose(mail), "Subject"), encoded);
  }
  mail.subject = mail.fromName = Text(300, L'审');
  mail.body = Text(5000, L'文');
  std::istringstream lines(Compose(mail));
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 79u) << line;
}

TEST(DevPlatformMailTest, AddressesThatCouldSayMoreAreRefused) {
  EXPECT_TRUE(IsAddress(L"名@example.com"));
  for (const auto* bad : {L"", L"a", L"a@b>\r\nDATA", L"a@b c", L"<a@b>"}) EXPECT_FALSE(IsAddress(bad));
  EXPECT_EQ(SplitAddresses(L" a@b ;;c@d; "), (std::vector<Text>{L"a@b", L"c@d"}));
}

// Where the table says an object begins, it must begin.
TEST(DevPlatformMailTest, PdfTableFindsEveryObject) {
  for (const std::size_t lines : {0u, 41u}) {
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
    EXPECT_NE(pdf.find("/Count " + std::to_string(lines > 40 ? 2 : 1)), std::string::npos) << lines;
  }
}

}  // namespace
}  // namespace tavio::test
