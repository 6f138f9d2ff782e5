#include <gtest/gtest.h>

#include <sstream>

#include "development/Mime.h"

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
  EXPECT_TRUE(IsAddress(L"名@example.com"));
  for (const auto* bad : {L"", L"a", L"a@b>\r\nDATA", L"a@b c"}) EXPECT_FALSE(IsAddress(bad));
}

TEST(DevPlatformMailTest, NamesAndSubjectsAreEncodedWithinTheLineLimit) {
  const std::pair<Text, const char*> cases[] = {
      {L"plain subject", "plain subject"},
      {L"审核", "=?GB2312?B?yfO6yw==?="},
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

}  // namespace
}  // namespace tavio::test
