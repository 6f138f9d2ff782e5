#include "delivery/SmtpSender.h"
#include "foundation/Error.h"
#include "tests/library/DeliveryTest.h"

namespace tavio::test {
namespace {

using Entries = std::vector<std::string>;

Value Fail() { throw Error(E_FAIL, L"Platform", L"断开 geheim"); }

class SendEmailTest : public DeliveryTest {
 protected:
  SendEmailTest() {
    gateway.emplace(L"MorlaMobileOpen.MorlaSendMail");
    gateway->On(L"MorlaSendMail", [this](Arguments& a) {
      EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_DISPATCH);
      requests.push_back(Show(a.At(0)));
      return answer();
    });
  }

  bool Send() { return message.SendEmail(Component(dataService)); }

  static std::string Request(const std::string& addresses) {
    return R"({PropsString: "Language=chs;UserID=16394;UserName=Ann;", Addrecipients: ")" + addresses +
           R"(", Subject: "单据 [FBillNo]", Body: "单号 CG001)" + "\r\n" + R"(请处理", Addattachment: "", bLog: 0s})";
  }

  FakeObject host;
  ComPtr<IDispatch> dataService = host.New();
  std::optional<FakeComponent> gateway;
  std::function<Value()> answer = [] { return Value(L""); };
  Entries requests;
};

TEST_F(SendEmailTest, HandsTheRequestToTheGateway) {
  package.Set(L"FAccessoryForEmail"_key, Value(true));  // which nobody here can print
  EXPECT_TRUE(Send());
  EXPECT_EQ(requests, Entries{Request("ann@x.com;bob@x.com")});
  EXPECT_EQ(users->asked, Entries{"U [{FUserID: 1}, {FUserID: 2}]"});
  EXPECT_EQ(gateway->Living() + users->Living(), 0);
  EXPECT_EQ(log->entries, (Entries{"begin TavioClassBillAction.Message.TransMessage 翻译消息",
                                   "end TavioClassBillAction.Message.TransMessage 翻译消息 1"}));
}

TEST_F(SendEmailTest, AsksOncePerTypeOfRecipient) {
  const auto record = [](const wchar_t* email) { return Record({{L"Email", email}}); };
  users->known = {{L"E", List({record(L"eve@x.com"), record(L"")})},
                  {L"U", List({record(L"EVE@X.COM"), Record({}), record(L"ann@x.com")})}};
  package.Set(L"EmailUsers"_key, Record({{L"e2", Record({{L"FUserType", L"E"}, {L"FUserID", L"2"}})},
                                         {L"3", Record({{L"FMessageID", 9}})},
                                         {L"6", Record({{L"FUserType", L"E"}})},
                                         {L"7", Record({{L"FUserType", L"S"}})}})
                                     .AsValue());
  message.ExcludeUser(List({7, L"9"}));
  EXPECT_TRUE(Send());
  EXPECT_EQ(users->asked, (Entries{"E [{FUserID: 2}, {FUserID: 6}]", "U [{FUserID: 3}]"}));
  EXPECT_EQ(requests, Entries{Request("eve@x.com;ann@x.com")});
  EXPECT_TRUE(PackageAt(package, L"EmailUsers"_key).Lookup(L"7"_key)) << "users are excluded from a copy";
}

TEST_F(SendEmailTest, NobodyToWriteToIsSilent) {
  const Item lists[] = {Value(), Record({{L"7", Record({})}}), Record({{L"1) or (1=1", Record({})}})};
  message.ExcludeUser(List({7}));
  for (const auto& list : lists) {
    package.Set(L"EmailUsers"_key, list.value);
    EXPECT_FALSE(Send()) << Show(list.value);
  }
  package.Set(L"EmailUsers"_key, TwoUsers().AsValue());
  users.reset();
  EXPECT_FALSE(Send());
  EXPECT_EQ(gateway->Created(), 0);
}

TEST_F(SendEmailTest, OnlyAnEmptyAnswerOfTheGatewayIsSuccess) {
  answer = [] { return Value(L"x"); };
  EXPECT_FALSE(Send());
  EXPECT_EQ(boxes.Take(), Boxes{Warning(L"发送邮件失败,请检查邮箱是否配置正确！")});
  answer = Fail;
  EXPECT_FALSE(Send());
  EXPECT_EQ(gateway->Living(), 0);
}

// Without a gateway: the road over SMTP. The client's profile holds `email`.
class SmtpTest : public SendEmailTest {
 protected:
  SmtpTest() {
    gateway.reset();
    client.On(L"UserIndependent", nullptr, [](Arguments& a) {
      EXPECT_TRUE(a.At(0).ToBool());
      return Value();
    });
    client.On(L"Load", [this](Arguments& a) {
      EXPECT_EQ(Show(a.At(1)), R"("Setting")");
      return a.At(0).EqualsText(L"Base_EMAIL") ? email.AsValue() : Value();
    });
    for (const auto* property :
         {L"Charset", L"ContentTransferEncoding", L"Encoding", L"ISOEncodeHeaders", L"Logging", L"MailServerUserName",
          L"MailServerPassWord", L"From", L"FromName", L"Subject", L"HTMLBody"}) {
      jmail.On(property, nullptr, [this, property](Arguments& a) {
        mail.push_back(Utf8(property) + "=" + Show(a.At(0)));
        return Value();
      });
    }
    for (const auto* method : {L"AddRecipient", L"Send"}) {
      jmail.On(method, [this, method](Arguments& a) {
        mail.push_back(Utf8(method));
        for (std::size_t i = 0; i < a.Count(); ++i) mail.back() += " " + Show(a.At(i));
        return method == Text(L"Send") ? answer() : Value();
      });
    }
    answer = [] { return Value(true); };
  }

  FakeComponent client{L"TavioClientBase.UserProfile"};
  FakeComponent jmail{L"Jmail.Message"};
  Entries mail;
  Dictionary email = Record({{L"txtMailSrv", L" mail.x.com "},
                             {L"txtAccountName", L"me@x.com"},
                             {L"txtShowName", L"示范平台"},
                             {L"chkSmtp", true},
                             {L"txtRZName", L"me"},
                             {L"txtRZPassword", L"geheim "}});
};

TEST_F(SmtpTest, TakesTheRoadWithoutAGateway) {
  EXPECT_TRUE(Send());
  std::string sent;
  for (const auto& step : mail) sent += step + ' ';
  EXPECT_EQ(sent,
            R"(Charset="GB2312" ContentTransferEncoding="base64" Encoding="base64" ISOEncodeHeaders=true Logging=true )"
            R"(MailServerUserName="me" MailServerPassWord="geheim" From="me@x.com" FromName="示范平台" )"
            R"(AddRecipient "ann@x.com" AddRecipient "bob@x.com" Subject="单据 [FBillNo]" )"
            R"(HTMLBody="单号 CG001<br>请处理" Send "mail.x.com" )");
  EXPECT_EQ(client.Living() + jmail.Living(), 0);
}

TEST_F(SmtpTest, FailuresShowTheBoxAndNothingOfTheLogin) {
  answer = Fail;
  EXPECT_FALSE(Send());
  EXPECT_EQ(boxes.Take(), Boxes{Warning(L"发送邮件失败！")});
  for (const auto& entry : log->entries) EXPECT_EQ(entry.find("geheim"), std::string::npos) << entry;
}

TEST_F(SmtpTest, NobodyWritesHeadersOfHisOwn) {
  EXPECT_FALSE(SmtpSender().Send(Record({{L"Addrecipients", L"a@x;b@x\rTo: c@x"}})));
  email.Set(L"txtAccountName"_key, Value(L"me@x.com\r\nBcc: b@x"));
  EXPECT_FALSE(SmtpSender().Send(Record({{L"Addrecipients", L"a@x"}})));
  EXPECT_EQ(boxes.Take(), Boxes(2, Warning(L"发送邮件失败！")));
  EXPECT_EQ(jmail.Created(), 0);
}

}  // namespace
}  // namespace tavio::test
