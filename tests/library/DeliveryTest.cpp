// Mails and short messages.

#include "delivery/SmtpSender.h"
#include "message/Message.h"
#include "tests/support/Platform.h"

namespace tavio::test {
namespace {

constexpr char kProps[] = R"("Language=enu;UserID=16394;UserName=Ann;")";
constexpr char kContent[] = "单号 CG001\r\n请处理";

// A message about bill 77 of class type 5, to users 1 and 2 by any path. The platform knows users by type letter, and
// notes what it was asked; so do the gateways.
class DeliveryTest : public LibraryTest {
 protected:
  DeliveryTest() {
    props->props = L"Language=enu;UserID=16394;UserName=Ann;";
    users.On(L"GetUserInfo", [this](Arguments& a) {
      EXPECT_EQ(a.Count(), 3u);
      EXPECT_EQ(Show(a.At(0)), kProps);
      EXPECT_EQ(a.Raw(2).vt, VT_BYREF | VT_DISPATCH);
      asked.push_back(Utf8(a.At(1).ToText()) + " " + Show(a.At(2)));
      return known.GetValue(Key(a.At(1).ToText()))->Copy();
    });
    const auto answered = [this](Arguments& a) {
      EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_DISPATCH);
      requests.push_back(Show(a.At(0)));
      return answer.Copy();
    };
    mailGateway->On(L"MorlaSendMail", answered);
    smsGateway.On(L"SmsSendForBillCheck", answered);
    message.ClassTypeID(5);
    message.ClassType(Record({{L"FName_CHS", L"采购申请"}, {L"FName_ENU", L"Requisition"}}));
    message.TableInfo(Record({}));
    message.AddVariable(Record({{L"FName", L"FBillNo"}, {L"FCaption", L"单号"}}));
    message.RefreshVariableValue(Record({{L"FID", 77}, {L"Page1", Record({{L"FBillNo", L"CG001"}})}}));
    message.SetMessage(package);
  }

  bool SendEmail() { return message.SendEmail(Component(host.New())); }
  static std::string Mail(const std::string& addresses, const std::string& attachment = "") {
    return std::string("{PropsString: ") + kProps + R"(, Addrecipients: ")" + addresses +
           R"(", Subject: "单据 [FBillNo]", Body: ")" + kContent + R"(", Addattachment: ")" + attachment +
           R"(", bLog: 0s})";
  }
  static std::string ShortMessage(const std::string& numbers) {
    return R"([{Recipients: ")" + numbers + R"(", SMContent: "单据 [FBillNo] : )" + kContent + R"(", PropsString: )" +
           kProps + ", SmsIsBack: false, BillType: 5, BillNo: 77}]";
  }

  FakeComponent users{L"TavioMSmsManager.clsBillUseInfo"};
  std::optional<FakeComponent> mailGateway{std::in_place, L"MorlaMobileOpen.MorlaSendMail"};
  FakeComponent smsGateway{L"MorlaMobileOpen.MobileOpen"};
  Dictionary known =
      Record({{L"U", List({Record({{L"FUserID", 1}, {L"Email", L"ann@x.com"}, {L"Mobile", L"13800000001"}}),
                           Record({{L"FUserID", 2}, {L"Email", L"bob@x.com"}, {L"Mobile", L"13800000002"}})})
                         .AsValue()}});
  Value answer{L""};
  Strings asked, requests;
  FakeObject host;
  Dictionary package = Record({{L"FTitle", L"单据 [FBillNo]"},
                               {L"FMessage", L"单号 [FBillNo]\r\n请处理"},
                               {L"MessageUsers", Users(L"users", {1, 2})},
                               {L"EmailUsers", Users(L"users", {1, 2})},
                               {L"SMSUsers", Users(L"users", {1, 2})}});
  Message message;
};

TEST_F(DeliveryTest, GatewaysTakeOneRequestToTheListedUsers) {
  package.Set(L"FAccessoryForEmail"_key, Value(true));  // which nobody here can print
  EXPECT_TRUE(SendEmail());
  answer = Value(L"ignored");
  EXPECT_TRUE(message.SendShortMessage());
  EXPECT_EQ(requests, (Strings{Mail("ann@x.com;bob@x.com"), ShortMessage("13800000001,13800000002")}));
  EXPECT_EQ(asked, Strings(2, "U [{FUserID: 1}, {FUserID: 2}]"));
  for (const auto* field : {L"FTitle", L"FMessage"}) package.Set(Key(TextView(field)), Value::Null());
  EXPECT_TRUE(message.SendShortMessage());
  EXPECT_NE(requests.back().find(R"(SMContent: " : ",)"), std::string::npos) << requests.back();
  answer = Value(L"");
  EXPECT_TRUE(SendEmail());
  EXPECT_NE(requests.back().find(R"(Subject: "", Body: "",)"), std::string::npos) << requests.back();
}

TEST_F(DeliveryTest, PrintedBillIsAttachedUnderTheObjectsName) {
  FakeComponent print(L"TavioClassBillPrint.clsNotePrint");
  const auto service = host.New();
  const wchar_t* path = L"bill.pdf";
  print.OnAssign(L"dataSrv", [&](Arguments& a) { EXPECT_EQ(a.At(0).ToObject(), service); });
  print.OnAssign(L"TableInfo", [&](Arguments& a) { EXPECT_EQ(Show(a.At(0)), "{}"); });
  print.On(L"CreatePDFFile", [&](Arguments& a) {
    EXPECT_EQ(Show(a.At(0)) + Show(a.At(1)) + Show(a.At(2)), std::string(R"("Requisition"77)") + kProps);
    a.Return(0, Value(path));
    return Value(true);
  });
  package.Set(L"FAccessoryForEmail"_key, Value(true));
  EXPECT_TRUE(message.SendEmail(Component(service)));
  path = L"Requisition";
  EXPECT_TRUE(message.SendEmail(Component(service)));
  EXPECT_EQ(requests, (Strings{Mail("ann@x.com;bob@x.com", "bill.pdf"), Mail("ann@x.com;bob@x.com")}));
}

TEST_F(DeliveryTest, AsksOncePerTypeOfRecipient) {
  const auto record = [](const wchar_t* email) { return Record({{L"Email", email}}); };
  known = Record({{L"E", List({record(L"eve@x.com"), record(L"")}).AsValue()},
                  {L"U", List({record(L"EVE@X.COM"), Record({}), record(L"ann@x.com")}).AsValue()}});
  package.Set(L"EmailUsers"_key, Record({{L"e2", Record({{L"FUserType", L"E"}, {L"FUserID", L"2"}})},
                                         {L"3", Record({{L"FMessageID", 9}})},
                                         {L"6", Record({{L"FUserType", L"E"}, {L"FUserID", L""}})},
                                         {L"7", Record({{L"FUserType", L"S"}})},
                                         {L"8", Record({{L"FUserType", L"S"}, {L"FUserID", Value::Null()}})}}));
  message.ExcludeUser(List({7, L"9"}));
  EXPECT_TRUE(SendEmail());
  EXPECT_EQ(asked, (Strings{"E [{FUserID: 2}, {FUserID: 6}]", "U [{FUserID: 3}]", "S [{FUserID: 8}]"}));
  EXPECT_EQ(requests, Strings{Mail("eve@x.com;ann@x.com")});
  EXPECT_TRUE(PackageAt(package, L"EmailUsers"_key).Lookup(L"7"_key)) << "users are excluded from a copy";
}

// Without a gateway: the path over SMTP. The client's profile holds `email`, the server's another mail server. A login
// that nobody asked for fails: the mail component here takes none.
class SmtpTest : public DeliveryTest {
 protected:
  SmtpTest() {
    mailGateway.reset();
    client->OnAssign(L"UserIndependent", [](Arguments& a) { EXPECT_EQ(Show(a.At(0)), "true"); });
    client->On(L"Load", [this](Arguments& a) {
      EXPECT_EQ(Show(a.At(1)), R"("Setting")");
      return a.At(0).EqualsText(L"Base_EMAIL") ? email.AsValue() : sms.Copy();
    });
    server->On(L"LoadUserProfile", [](Arguments& a) {
      EXPECT_EQ(Show(a.At(0)) + Show(a.At(2)) + Show(a.At(3)), kProps + std::string(R"("Setting"true)"));
      const auto section = Record({{L"txtMailSrv", L"server.x.com"}});
      return a.At(1).EqualsText(L"Base_EMAIL") ? section.AsValue() : Value();
    });
    for (const auto* property : {L"Charset", L"ContentTransferEncoding", L"Encoding", L"ISOEncodeHeaders", L"Logging",
                                 L"From", L"FromName", L"Subject", L"HTMLBody"}) {
      jmail.OnAssign(property, [] {});
    }
    jmail.On(L"AddRecipient", [] {});
    jmail.On(L"Send", [this](Arguments& a) { sentBy.push_back(Utf8(a.At(0).ToText())); });
  }
  std::optional<FakeComponent> client{std::in_place, L"TavioClientBase.UserProfile"};
  std::optional<FakeComponent> server{std::in_place, L"TavioServerBase.UserProfile"};
  FakeComponent jmail{L"Jmail.Message"};
  Strings sentBy;
  Value sms;
  Dictionary email = Record({{L"txtMailSrv", L" mail.x.com "}, {L"txtAccountName", L"me@x.com"}});
};

TEST_F(SmtpTest, SettingsComeFromTheFirstSourceThatHasThem) {
  constexpr wchar_t kKey[] = L"SoftWare\\Morla\\SMReg", kRegistered[] = L"registry.x.com";
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, kKey, L"txtMailSrv", REG_SZ, kRegistered, sizeof kRegistered);
  constexpr DWORD kNumber = 25;
  const std::tuple<const char*, std::function<void()>, const char*> cases[] = {
      {"the client's", [] {}, "mail.x.com"},
      {"beside a bad answer", [&] { sms = Value(5); }, "mail.x.com"},
      {"a blank", [&] { email.Set(L"txtMailSrv"_key, Value(L"  ")); }, "registry.x.com"},
      {"none of the client's", [&] { email = {}; }, "server.x.com"},
      {"no client", [&] { client.reset(); }, "server.x.com"},
      {"no server", [&] { server.reset(); }, "registry.x.com"},
      {"a number",
       [&] { RegSetKeyValueW(HKEY_LOCAL_MACHINE, kKey, L"txtMailSrv", REG_DWORD, &kNumber, sizeof kNumber); }, "25"},
      {"nothing", [&] { RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKey); }, nullptr},
  };
  for (const auto& [row, prepare, expected] : cases) {
    prepare();
    sentBy.clear();
    EXPECT_EQ(SendEmail(), expected != nullptr) << row;
    EXPECT_EQ(sentBy, expected ? Strings{expected} : Strings()) << row;
  }
}

TEST_F(SmtpTest, NobodyWritesHeadersOfHisOwn) {
  const auto send = [](const wchar_t* addresses) { return SmtpSender().Send(Record({{L"Addrecipients", addresses}})); };
  EXPECT_FALSE(send(L"a@x;b@x\rTo: c@x"));
  for (const auto* setting : {L"txtAccountName", L"txtShowName"}) {
    const auto usual = std::exchange(email, email.Clone());
    email.Set(Key(TextView(setting)), Value(L"me@x.com\r\nBcc: b@x"));
    EXPECT_FALSE(send(L"a@x")) << Utf8(setting);
    email = usual;
  }
  EXPECT_EQ(boxes.Take(), Boxes(3, Warning(L"发送邮件失败！")));
  EXPECT_EQ(jmail.Created(), 0);
}

// The approval notice: user 1 must be told, user 2 need not.
class ApprovalNoticeTest : public DeliveryTest {
 protected:
  ApprovalNoticeTest() {
    users.On(L"GetIsUserNeedSend", [this](Arguments& a) {
      EXPECT_EQ(a.Raw(1).vt, VT_BYREF | VT_DISPATCH);
      EXPECT_EQ(Show(a.At(0)) + Show(a.At(2)), kProps + std::string("3s"));
      asked.push_back(Show(a.At(1)));
      return told.Copy();
    });
    classInfo.On(L"GetData", [this](Arguments& a) {
      queries.push_back(Utf8(a.At(1).ToText()));
      return rows.New();
    });
  }

  static Dictionary Told(const Item& user, bool needed) {
    return Record({{L"FUserID", user.value}, {L"FIsNeedSend", needed}});
  }

  FakeComponent classInfo{L"TavioMClass.ClassInfo"};
  const Dictionary row = Record({{L"FMobilePhone", L"13800000001"}});
  FakeRecords rows{List({row, Record({{L"FMobilePhone", L""}}), row})};
  Value told = List({Told(1, true), Told(2, false)}).AsValue();
  Strings queries;
};

TEST_F(ApprovalNoticeTest, GoesToThoseWhoMustBeTold) {
  PackageAt(package, L"MessageUsers"_key).Set(L"3"_key, Value(1));
  message.ExcludeUser(List({3}));
  EXPECT_TRUE(message.SendSMS());
  EXPECT_EQ(asked, Strings{"[{FID: 77, FUserID: 1}, {FID: 77, FUserID: 2}]"});
  EXPECT_EQ(queries, Strings{"SELECT  b.FMobilePhone FROM t_User a  LEFT OUTER JOIN t_Emp b ON b.FItemID = a.FEmpID "
                             "Where a.FUserID in (1) AND a.FForbidden <> 1"});
  EXPECT_EQ(requests, Strings{ShortMessage("13800000001")});
}

TEST_F(ApprovalNoticeTest, EndsSilentlyWhereNobodyIsToBeTold) {
  for (const auto& answers : {Item(Value()), Item(List({Told(1, false)})), Item(List({Told(L"1) or (1=1", true)}))}) {
    told = answers.value.Copy();
    EXPECT_FALSE(message.SendSMS()) << Show(told);
  }
  message.ExcludeUser(List({1, 2}));
  EXPECT_TRUE(!message.SendSMS() && asked.size() == 3);
  EXPECT_TRUE(queries.empty());
  EXPECT_EQ(smsGateway.Created(), 0);
}

}  // namespace
}  // namespace tavio::test
