#include "delivery/MailSettings.h"
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

  static std::string Request(const std::string& addresses, const std::string& attachment = "") {
    return R"({PropsString: "Language=chs;UserID=16394;UserName=Ann;", Addrecipients: ")" + addresses +
           R"(", Subject: "单据 [FBillNo]", Body: "单号 CG001)" + "\r\n" + R"(请处理", Addattachment: ")" + attachment +
           R"(", bLog: 0s})";
  }

  FakeObject host;
  ComPtr<IDispatch> dataService = host.New();
  std::optional<FakeComponent> gateway;
  std::function<Value()> answer = [] { return Value(L""); };
  Entries requests;
};

TEST_F(SendEmailTest, HandsTheRequestToTheGateway) {
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
  users->On(L"UserInfoEx", [](Arguments&) { return List({Record({{L"Email", L"ex@x.com"}})}).AsValue(); });
  Recipients(L"EmailUsers", Record({{L"e2", Record({{L"FUserType", L"E"}, {L"FUserID", L"2"}})},
                                    {L"3", Record({{L"FMessageID", 9}})},
                                    {L"4", L"a plain value"},
                                    {L"5", Record({{L"FUserType", L"C"}})},
                                    {L"6", Record({{L"FUserType", L"E"}})},
                                    {L"7", Record({{L"FUserType", L"S"}})}}));
  message.ExcludeUser(List({7, L"9"}));
  EXPECT_TRUE(Send());
  EXPECT_EQ(users->asked,
            (Entries{"E [{FUserID: 2}, {FUserID: 6}]", "U [{FUserID: 3}, {FUserID: 4}]", "C [{FUserID: 5}]"}));
  EXPECT_EQ(requests, Entries{Request("eve@x.com;ann@x.com")});
  EXPECT_EQ(users->Created(), 1);
  EXPECT_TRUE(PackageAt(package, L"EmailUsers"_key).Lookup(L"7"_key)) << "users are excluded from a copy";
}

TEST_F(SendEmailTest, NobodyToWriteToIsSilent) {
  const Item lists[] = {
      Value(),
      Dictionary(),
      Record({}),
      L"1;2",
      Record({{L"7", Record({})}}),  // excluded
      Record({{L"1", Record({{L"FUserType", L"S"}})}}),
      Record({{L"1) or (1=1", Record({})}}),
      Record({{L"1", Record({{L"FUserID", L"Ann"}})}}),
      Record({{L"2147483648", Record({})}}),
  };
  message.ExcludeUser(List({7}));
  for (const auto& list : lists) {
    Recipients(L"EmailUsers", list);
    EXPECT_FALSE(Send()) << Show(list.value);
  }
  Recipients(L"EmailUsers", TwoUsers());
  users->known[L"U"] = List({Record({{L"Email", L""}}), Record({{L"Mobile", L"138"}})});
  EXPECT_FALSE(Send());
  users.reset();
  EXPECT_FALSE(Send());
  EXPECT_FALSE(Message().SendEmail(Component(dataService)));
  EXPECT_EQ(gateway->Created(), 0);
}

TEST_F(SendEmailTest, OnlyAnEmptyAnswerOfTheGatewayIsSuccess) {
  answer = [] { return Value(L"x"); };
  EXPECT_FALSE(Send());
  EXPECT_EQ(boxes.Take(), Boxes{Warning(L"发送邮件失败,请检查邮箱是否配置正确！")});
  answer = Fail;
  EXPECT_FALSE(Send());
  answer = [] { return Value(); };
  EXPECT_TRUE(Send());
  EXPECT_EQ(requests.size(), 3u);
  EXPECT_EQ(gateway->Living(), 0);
}

class PrintedBillTest : public SendEmailTest {
 protected:
  PrintedBillTest() {
    package.Set(L"FAccessoryForEmail"_key, Value(true));
    const auto expect = [](const ComPtr<IDispatch>& expected) {
      return [expected](Arguments& a) {
        EXPECT_EQ(a.At(0).ToObject().Get(), expected.Get());
        return Value();
      };
    };
    print.emplace(L"TavioClassBillPrint.clsNotePrint");
    print->On(L"dataSrv", nullptr, expect(dataService));
    print->On(L"TableInfo", nullptr, expect(tableInfo.Object()));
    print->On(L"CreatePDFFile", [this](Arguments& a) {
      EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_BSTR);
      EXPECT_EQ(a.Raw(1).vt, VT_BYREF | VT_I4);
      arguments = Show(a.At(0)) + " " + Show(a.At(1)) + " " + Show(a.At(2));
      a.Return(0, Value(path));
      return made();
    });
  }

  std::optional<FakeComponent> print;
  std::string arguments;
  const wchar_t* path = L"C:\\77.pdf";
  std::function<Value()> made = [] { return Value(true); };
};

TEST_F(PrintedBillTest, IsAttached) {
  EXPECT_TRUE(Send());
  EXPECT_EQ(arguments, R"("采购申请" 77 "Language=chs;UserID=16394;UserName=Ann;")");
  EXPECT_EQ(requests, Entries{Request("ann@x.com;bob@x.com", "C:\\77.pdf")});
  EXPECT_EQ(print->Living(), 0);
}

TEST_F(PrintedBillTest, NeverKeepsTheMailBack) {
  made = [] { return Value(false); };
  EXPECT_TRUE(Send());
  made = Fail;
  EXPECT_TRUE(Send());
  made = [] { return Value(true); };
  path = L"";
  EXPECT_TRUE(Send());
  EXPECT_EQ(print->Calls(L"CreatePDFFile"), 3);
  package.Set(L"FAccessoryForEmail"_key, Value(false));
  EXPECT_TRUE(Send());
  EXPECT_EQ(print->Created(), 3) << "nobody asked for it";
  package.Set(L"FAccessoryForEmail"_key, Value(true));
  print.reset();
  EXPECT_TRUE(Send());
  EXPECT_EQ(requests, Entries(5, Request("ann@x.com;bob@x.com")));
}

constexpr wchar_t kRegistryKey[] = L"SoftWare\\Morla\\SMReg";

// Without a gateway: the road over SMTP. The client's profile holds `email`.
class SmtpTest : public PrintedBillTest {
 protected:
  SmtpTest() {
    gateway.reset();
    client.emplace(L"TavioClientBase.UserProfile");
    client->On(L"UserIndependent", nullptr, [this](Arguments& a) { return independent = Show(a.At(0)), Value(); });
    client->On(L"Load", [this](Arguments& a) {
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
    for (const auto* method : {L"AddRecipient", L"AddAttachment", L"Send"}) {
      jmail.On(method, [this, method](Arguments& a) {
        mail.push_back(Utf8(method));
        for (std::size_t i = 0; i < a.Count(); ++i) mail.back() += " " + Show(a.At(i));
        return method == Text(L"Send") ? answer() : Value();
      });
    }
    answer = [] { return Value(true); };
  }
  ~SmtpTest() override { RegDeleteTreeW(HKEY_LOCAL_MACHINE, kRegistryKey); }

  static void Register(const wchar_t* name, const Text& value) {
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, kRegistryKey, name, REG_SZ, value.c_str(), bytes), ERROR_SUCCESS);
  }

  std::optional<FakeComponent> client;
  FakeComponent jmail{L"Jmail.Message"};
  Entries mail;
  std::string independent;
  Dictionary email = Record({{L"txtMailSrv", L" mail.x.com "},
                             {L"txtAccountName", L"me@x.com"},
                             {L"txtShowName", L"示范平台"},
                             {L"chkSmtp", true},
                             {L"txtRZName", L"me"},
                             {L"txtRZPassword", L"geheim "}});
};

TEST_F(SmtpTest, TakesTheRoadWithoutAGateway) {
  EXPECT_TRUE(Send());
  EXPECT_EQ(independent, "true");
  std::string sent;
  for (const auto& step : mail) sent += step + ' ';
  EXPECT_EQ(sent,
            R"(Charset="GB2312" ContentTransferEncoding="base64" Encoding="base64" ISOEncodeHeaders=true Logging=true )"
            R"(MailServerUserName="me" MailServerPassWord="geheim" From="me@x.com" FromName="示范平台" )"
            R"(AddRecipient "ann@x.com" AddRecipient "bob@x.com" Subject="单据 [FBillNo]" )"
            R"(HTMLBody="单号 CG001<br>请处理" AddAttachment "C:\77.pdf" false Send "mail.x.com" )");
  EXPECT_EQ(client->Living() + jmail.Living(), 0);
}

TEST_F(SmtpTest, LogsInOnlyWhereAskedTo) {
  const std::pair<Item, bool> settings[] = {{Value(), false}, {false, false}, {L"0", false}, {L" ", false},
                                            {true, true},     {L"1", true},   {-1, true}};
  for (const auto& [stored, logsIn] : settings) {
    email.Set(L"chkSmtp"_key, stored.value);
    mail.clear();
    EXPECT_TRUE(Send());
    EXPECT_EQ(mail.at(5), logsIn ? R"(MailServerUserName="me")" : R"(From="me@x.com")") << Show(stored.value);
  }
}

TEST_F(SmtpTest, FailuresShowTheBoxAndNothingOfTheLogin) {
  answer = Fail;
  EXPECT_FALSE(Send());
  answer = [] { return Value(false); };
  EXPECT_FALSE(Send());
  EXPECT_EQ(boxes.Take(), Boxes(2, Warning(L"发送邮件失败！")));
  answer = [] { return Value(); };
  EXPECT_TRUE(Send());
  for (const auto& entry : log->entries) EXPECT_EQ(entry.find("geheim"), std::string::npos) << entry;
}

TEST_F(SmtpTest, NobodyWritesHeadersOfHisOwn) {
  const struct {
    Text account, name, recipients;
  } cases[] = {
      {L"me@x.com\r\nBcc: b@x", L"示范", L"a@x"},
      {L"me@x.com", L"示范\n平台", L"a@x"},
      {L"me@x.com", L"示范", L"a@x;b@x\rTo: c@x"},
      {L"me@x.com", L"示范", Text(L"a@x\0", 4)},
  };
  for (const auto& c : cases) {
    email.Set(L"txtAccountName"_key, Value(TextView(c.account)));
    email.Set(L"txtShowName"_key, Value(TextView(c.name)));
    EXPECT_FALSE(SmtpSender().Send(Record({{L"Addrecipients", c.recipients}}))) << "case " << &c - cases;
    EXPECT_EQ(boxes.Take(), Boxes{Warning(L"发送邮件失败！")});
  }
  email.Set(L"txtAccountName"_key, Value(L"me@x.com"));
  EXPECT_EQ(jmail.Created(), 0);
  EXPECT_TRUE(SmtpSender().Send(Record({{L"Addrecipients", L"a@x"}, {L"Subject", L"a\r\nBcc: b@x"}})));
  EXPECT_EQ(mail.at(mail.size() - 3), R"(Subject="a  Bcc: b@x")");
}

TEST_F(SmtpTest, NoServerIsSilentForTheMessageAndABoxForTheSender) {
  email.Remove(L"txtMailSrv"_key);
  EXPECT_FALSE(Send());
  EXPECT_EQ(boxes.Take(), Boxes{});
  EXPECT_FALSE(SmtpSender().Send(Record({{L"Addrecipients", L"a@x"}})));
  EXPECT_EQ(boxes.Take(), Boxes{Warning(L"你还没有设置邮件服务信息。")});
  EXPECT_EQ(jmail.Created(), 0);
}

TEST_F(SmtpTest, SettingsComeFromTheFirstThatHasThem) {
  const auto shown = [](const std::string& server, const std::string& account) {
    return R"({txtMailSrv: ")" + server + R"(", txtAccountName: ")" + account +
           R"(", txtShowName: "", chkSmtp: "", txtRZName: "", txtRZPassword: "", SendOnTimeAccount: "", )"
           R"(SendOnTimePassword: "", txtRecivePassword: ""})";
  };
  const auto loaded = [] { return Show(PackageAt(LoadMailSettings(), L"email"_key)); };
  FakeComponent server(L"TavioServerBase.UserProfile");
  server.On(L"LoadUserProfile", [](Arguments& a) {
    EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_BSTR);
    EXPECT_EQ(Show(a.At(2)) + Show(a.At(3)), R"("Setting"true)");
    return a.At(1).EqualsText(L"Base_EMAIL") ? Record({{L"txtMailSrv", L"server.x"}}).AsValue() : Value();
  });
  email = Record({{L"txtMailSrv", L"client.x"}, {L"txtAccountName", L"  "}});
  EXPECT_EQ(loaded(), shown("client.x", ""));
  Register(L"txtMailSrv", L"registry.x");
  Register(L"txtAccountName", L" registry@x ");
  Register(L"txtRecivePassword", L"");
  EXPECT_EQ(loaded(), shown("client.x", "registry@x"));
  EXPECT_EQ(server.Created(), 0);
  client->On(L"Load", [](Arguments&) { return Fail(); });
  EXPECT_EQ(loaded(), shown("server.x", "registry@x"));
  client.reset();
  EXPECT_EQ(loaded(), shown("server.x", "registry@x"));
  server.On(L"LoadUserProfile", [](Arguments&) { return Fail(); });
  EXPECT_EQ(loaded(), shown("registry.x", "registry@x"));
  EXPECT_EQ(Show(PackageAt(LoadMailSettings(), L"sms"_key)), "{}");
  EXPECT_EQ(server.Living(), 0);
}

}  // namespace
}  // namespace tavio::test
