#include <filesystem>
#include <fstream>

#include "companion/preview/Channels.h"
#include "companion/preview/Compose.h"
#include "tests/companion/Platform.h"

namespace tavio::test {
namespace {

constexpr const wchar_t* kChannels[] = {L"system", L"mail", L"short", L"approval"};

Component Preview() { return Component::Create(L"TavioCompanion.Preview"); }
Dictionary PreviewOf(const Component& message, const Component& preview = Preview()) {
  return Dictionary(preview.Call(L"OfMessage", Value(message.Object())));
}

Dictionary ChannelOf(const Dictionary& result, const wchar_t* name) {
  return PackageAt(PackageAt(result, L"Channels"_key), Key(TextView(name)));
}

// A person's reason on a channel, with what it names; "" where they are not one of the channel's people.
std::string ReasonOf(const Dictionary& channel, std::int32_t user) {
  const Vector people(*channel.Get(L"People"_key));
  for (std::int32_t i = 1; i <= people.Count(); ++i) {
    const auto person = people.Record(i);
    if (person.Get(L"FUserID"_key)->ToInt32() != user) continue;
    auto reason = Utf8(person.Get(L"FReason"_key)->ToText());
    for (const auto* list : {L"Fields", L"Within"}) {
      const Vector named(*person.Get(Key(TextView(list))));
      for (std::int32_t k = 1; k <= named.Count(); ++k) reason += " " + Utf8(named.Item(k)->ToText());
    }
    if (person.Get(L"FIsUnknown"_key)->ToBool()) reason += " (unknown)";
    if (person.Get(L"FIsForbidden"_key)->ToBool()) reason += " (forbidden)";
    if (!person.Get(L"FWasAnswered"_key)->ToBool()) reason += " (unanswered)";
    return reason;
  }
  return {};
}

// A user with an employee.
void Employ(int id, const Text& mail, const Text& number, int forbidden, int told) {
  const auto n = std::to_wstring(id);
  Sql(L"insert into t_Emp values (" + n + L", 'E', 'N', '" + number + L"', '" + mail + L"')");
  Sql(L"insert into t_User values (" + n + L", 'N', " + n + L", " + std::to_wstring(forbidden) + L")");
  Sql(L"insert into t_UserNeedSend values (" + n + L", 3, " + std::to_wstring(told) + L")");
}

Component ReasonsMessage() {
  const auto message = HostMessage();
  const auto package = PackageOf(message);
  package.Set(L"FTitle"_key, Value(TextView(L"标题 [FBillNo] " + Text(50, L'长'))));
  package.Set(L"FMessage"_key, Value(L"[FBillNo] [FHost] [FGroup] [FCheckState] [FNone] \u20bf [open"));
  package.Set(L"FAccessoryForEmail"_key, Value(true));
  for (const auto* list : {L"MessageUsers", L"EmailUsers", L"SMSUsers"}) {
    package.Set(Key(TextView(list)), Users({16395, 16397, 16398, 16400, 16396, 7001, 7002, 7003, 7004, 7005}));
  }
  PackageAt(package, L"MessageUsers"_key).Remove(L"16396"_key);  // a bill field brings this one in
  PackageAt(PackageAt(package, L"EmailUsers"_key), L"7005"_key).Set(L"FUserID"_key, Value(L""));
  message.Call(L"AddVariable", Record({{L"FName", L"FHost"}, {L"FCaption", L"宿主"}, {L"FValue", L"h"}}));
  message.Call(L"AddVariable", Record({{L"FName", L"FGroup"}, {L"FCaption", L"组"}}));
  PackageAt(Dictionary(message.Call(L"GetVariableList")), L"FGroup"_key).Remove(L"FValue"_key);
  message.Assign(L"GroupInfo", Record({{L"FGroup", L"g"}}).AsValue());
  message.Assign(L"ExcludeUser", List({16397}).AsValue());
  message.Assign(L"MustSelectMsgUser", Value(true));
  return message;
}

// Bill 5001 names 16396 and 16394 in fields.
constexpr struct {
  const char* name;
  std::int32_t user;
  const char* reasons[4];  // in the order of kChannels
} kReasonRows[] = {
    {"gets everything", 16395, {"gets it", "gets it", "gets it", "gets it"}},
    {"excluded", 16397, {"excluded", "excluded", "excluded", "excluded"}},
    {"by a bill field", 16396, {"gets it 负责人", "gets it", "gets it", ""}},
    {"by a hidden bill field", 16394, {"gets it 制单人", "", "", ""}},
    {"unknown", 16400, {"gets it (unknown)", "unknown (unknown)", "unknown (unknown)", "not told"}},
    {"forbidden",
     16398,
     {"gets it (forbidden)", "forbidden (forbidden)", "forbidden (forbidden)", "forbidden (forbidden)"}},
    {"no address", 7003, {"gets it", "no address", "no address", "no address"}},
    {"within another", 7001, {"gets it", "dropped lina@example.com", "dropped 13800000002", "gets it"}},
    {"across entries",
     7002,
     {"gets it", "dropped lina@example.com wangfang@example.com", "dropped 13800000002 13800000003", "gets it"}},
    {"same number", 7004, {"gets it", "gets it", "dropped 13800000002", "dropped 16395"}},
    {"not told", 7005, {"gets it", "gets it", "gets it", "not told"}},
};

TEST(PreviewTest, TellsWhyEachPersonGetsItOrNot) {
  Employ(7001, L"na@example.com", L"3800000002", 0, 1);        // within 李娜's
  Employ(7002, L"COM;wangfang@example.com", L"02,138", 0, 1);  // across two entries
  Employ(7003, L"", L"", 0, 1);
  Employ(7004, L"same@example.com", L"13800000002", 0, 1);   // the very number of 李娜
  Employ(7005, L"quiet@example.com", L"13900007005", 2, 0);  // a flag that forbids nothing
  const auto result = PreviewOf(ReasonsMessage());
  for (const auto& row : kReasonRows) {
    for (std::size_t i = 0; i < std::size(kChannels); ++i) {
      EXPECT_EQ(ReasonOf(ChannelOf(result, kChannels[i]), row.user), row.reasons[i])
          << row.name << ", " << Utf8(kChannels[i]);
    }
  }
  for (const auto* table : {L"t_User where FUserID", L"t_Emp where FItemID", L"t_UserNeedSend where FUserID"}) {
    Sql(L"delete from " + Text(table) + L" between 7001 and 7005");
  }
}

TEST(PreviewTest, TellsWhereValuesComeFromAndWhatIsLost) {
  const auto result = PreviewOf(ReasonsMessage());
  std::string origins;
  const Vector variables(*result.Get(L"Variables"_key));
  for (std::int32_t i = 1; i <= variables.Count(); ++i) {
    const auto variable = variables.Record(i);
    if (!variable.Get(L"FIsUsed"_key)->ToBool()) continue;
    for (const auto* field : {L"FName", L"FValue", L"FOrigin"}) {
      origins += Utf8(variable.Get(Key(TextView(field)))->ToText()) + (field[1] == L'O' ? "; " : " ");
    }
  }
  EXPECT_EQ(origins,
            "FBillNo CGSQ000001 field; FHost h host; FGroup g group; FCheckState [FCheckState] literal; "
            "FNone [FNone] literal; ");
  EXPECT_EQ(Show(*result.Get(L"Lost"_key)), "[\"\u20bf (U+20BF)\"]");
  EXPECT_EQ(Show(*result.Get(L"NamesInTitle"_key)), "[\"FBillNo\"]");
  EXPECT_EQ(result.Get(L"FSentTitle"_key)->ToText().size(), 50u);
}

// Everything that the platform keeps of what was sent. (The log is the library's, which held it before the recorder.)
std::string Stored() {
  return Sql(L"select count(*) as F from t_Inbox union all select count(*) from t_MailOutbox "
             L"union all select count(*) from t_SmsOutbox") +
         Sql(L"select FNext as F from t_Identity where FName <> 'Log' order by FName");
}

// The calls that reached a component, with their arguments as they are written down.
std::string Reached(const Component& recorder, const wchar_t* component) {
  std::string calls;
  const Vector list(recorder.Read(L"Calls"));
  for (std::int32_t i = 1; i <= list.Count(); ++i) {
    const auto call = list.Record(i);
    const bool isCall = call.Get(L"FKind"_key)->EqualsText(L"call");
    if (isCall && call.Get(L"FComponent"_key)->EqualsText(component)) calls += Show(*call.Get(L"Arguments"_key)) + "\n";
  }
  return calls;
}

std::string WithoutPath(std::string request) {
  const auto begin = request.find("Addattachment: \"");
  if (begin != std::string::npos) request.erase(begin, request.find(", bLog") - begin);
  return request;
}

TEST(PreviewTest, ShowsWhatTheGatewaysThenGetAndSendsNothingItself) {
  const auto message = ReasonsMessage();
  const auto before = Stored(), package = Show(PackageOf(message)), variables = Show(message.Call(L"GetVariableList"));
  const auto result = PreviewOf(message);
  EXPECT_EQ(Stored(), before);
  EXPECT_EQ(Show(PackageOf(message)), package);
  EXPECT_EQ(Show(message.Call(L"GetVariableList")), variables);
  EXPECT_TRUE(message.Read(L"MustSelectMsgUser").ToBool());

  message.Assign(L"MustSelectMsgUser", Value(false));
  const auto recorder = Component::Create(L"TavioCompanion.Recorder");
  recorder.Call(L"Trace");
  EXPECT_TRUE(message.Call(L"SendMessage").ToBool());
  EXPECT_TRUE(message.Call(L"SendEmail", Value(ComPtr<IDispatch>())).ToBool());
  EXPECT_TRUE(message.Call(L"SendShortMessage").ToBool());
  EXPECT_TRUE(message.Call(L"SendSMS").ToBool());
  recorder.Call(L"Stop");
  EXPECT_NE(Stored(), before);

  const auto request = [&](const wchar_t* channel) { return ChannelOf(result, channel).Get(L"Request"_key)->Copy(); };
  std::string system;
  const Dictionary arguments(request(L"system"));
  for (std::int32_t i = 1; i <= arguments.Count(); ++i) system += (i > 1 ? ", " : "") + Show(arguments.At(i).Stored());
  EXPECT_EQ("[" + system + "]\n", Reached(recorder, L"TavioAppCommand.Command"));
  EXPECT_EQ(WithoutPath("[" + Show(request(L"mail")) + "]\n"),
            WithoutPath(Reached(recorder, L"MorlaMobileOpen.MorlaSendMail")));
  EXPECT_EQ("[[" + Show(request(L"short")) + "]]\n[[" + Show(request(L"approval")) + "]]\n",
            Reached(recorder, L"MorlaMobileOpen.MobileOpen"));
  EXPECT_EQ(system.find("Pwd"), std::string::npos);
}

TEST(PreviewTest, NamesTheFailureOfAWholeChannel) {
  const auto badKey = Record({{L"x1", 0}, {L"16395", 0}}), tooMany = Dictionary::New();
  for (std::int32_t user = 1; user <= 32769; ++user) tooMany.Set(Key(user), Value(0));
  const std::string kBadKey = "名单中的键不是用户编号: x1", kSending = "TavioClassBillAction.Message : SendMessage\r\n";
  const struct {
    const char* name;
    const wchar_t* field;
    Item value;
    const wchar_t* channel;
    std::string problem;
    const char* reason;  // of 16395
  } rows[] = {
      {"no list", L"SMSUsers", Dictionary(), L"short", "消息中没有接收人名单", ""},
      {"a bad key", L"EmailUsers", badKey, L"mail", kBadKey, "failed"},
      {"a bad key of a notice", L"MessageUsers", badKey, L"approval", kBadKey, "failed"},
      {"a bad key of a system message", L"MessageUsers", badKey, L"system", kSending + "类型不匹配", "failed"},
      {"one user in two entries", L"EmailUsers", Record({{L"16395", 0}, {L"x", Record({{L"FUserID", 16395}})}}),
       L"mail", "", "gets it"},
      {"no flag", L"FAccessoryForEmail", L"x", L"mail", "操作失败,但没有提示", "failed"},
      {"too many", L"MessageUsers", tooMany, L"system", "接收人超过32767个: " + kSending + "溢出", "failed"},
      {"nobody left", L"EmailUsers", Users({16398}), L"mail", "没有可发送的地址或号码", ""},
  };
  for (const auto& [name, field, value, channelName, problem, reason] : rows) {
    const auto message = ReasonsMessage();
    PackageOf(message).Set(Key(TextView(field)), value.value);
    const auto channel = ChannelOf(PreviewOf(message), channelName);
    EXPECT_EQ(Utf8(channel.Get(L"FProblem"_key)->ToText()), problem) << name;
    EXPECT_EQ(ReasonOf(channel, 16395), reason) << name;
  }
}

TEST(PreviewTest, TellsWhatTheTableOfUsersCannotTell) {
  const auto message = HostMessage(), preview = Preview();
  const auto bill = companion::Templates().Bill(1005, 5001);
  PackageAt(bill, L"Page1"_key).Set(L"FManager"_key, Record({{L"FEmpID", 2}}));
  message.Assign(L"Data", bill.AsValue());
  preview.Assign(L"Bill", bill.AsValue());
  PackageOf(message).Set(L"MessageUsers"_key, Users({16395}));
  const auto channel = [&](const wchar_t* column, const wchar_t* name) {
    const WithoutUserColumn gone(column);
    return ChannelOf(PreviewOf(message, preview), name);
  };
  const auto notice = channel(L"FName", L"approval");
  EXPECT_EQ(Show(*notice.Get(L"FProblem"_key)), "\"读不到用户表 t_User\"");
  EXPECT_EQ(ReasonOf(notice, 16395), "unread");
  EXPECT_EQ(ReasonOf(channel(L"FForbidden", L"system"), 16395), "failed") << "the employee of a bill field";
}

TEST(PreviewTest, TakesNobodysAnswerForAPersons) {
  using companion::Reason, companion::Snapshot;
  const auto nameless = Record({{L"Email", L"a@x"}}), other = Record({{L"FUserID", 16396}});
  // The box is that of the operation that then failed; null if it was silent. The reason is that of 16395.
  const std::tuple<const char*, Vector, const wchar_t*, const char*, Reason> rows[] = {
      {"another's", List({other}), L"Pwd is geheim-17", "Pwd is ***", Reason::kUnanswered},
      {"in order", List({nameless, Record({{L"Email", L"b@x"}})}), L"x", "x", Reason::kFailed},
      {"too few", List({nameless}), nullptr, "平台的答复没有 FUserID,不知道是谁的", Reason::kUnanswered},
      {"raises", {}, nullptr, "TavioMSmsManager.clsBillUseInfo.GetUserInfo: ", Reason::kFailed},
  };
  const auto list = Users({16395, 16396}), package = Record({{L"EmailUsers", list}});
  for (const auto& [name, answer, box, problem, reason] : rows) {
    std::deque<companion::Call> calls(1);
    calls[0].progId = L"TavioMSmsManager.clsBillUseInfo";
    calls[0].member = L"GetUserInfo";
    for (const auto& argument : {Value(L"Password=geheim-17;"), Value(L"U"), list.AsValue()}) {
      calls[0].arguments.push_back(Snapshot::Of(argument.Raw(), 100));
    }
    if (answer) calls[0].answer = Snapshot::Of(answer.AsValue().Raw(), 100);
    calls[0].result = answer ? S_OK : E_FAIL;
    companion::Users users;
    companion::Sending sending{false, {&calls[0]}, {}};
    if (box) sending.boxes.emplace_back(box);
    const auto channel = companion::MailOf(sending, {package, companion::Secrets(calls), users, {}, {}});
    EXPECT_EQ(Utf8(channel.problem), problem) << name;
    EXPECT_EQ(channel.people.at(0).reason, reason) << name;
  }
}

// Without a gateway a mail goes over SMTP, if a server is set.
TEST(PreviewTest, ShowsWhatTheMailServerWouldGet) {
  const auto profile = Component::Create(L"TavioClientBase.UserProfile");
  profile.Assign(L"UserIndependent", Value(true));
  const Dictionary usual(profile.Call(L"Load", L"Base_EMAIL", L"Setting")), settings = usual.Clone();
  settings.Set(L"txtMailSrv"_key, Value(L"mail.example.com"));
  settings.Set(L"chkSmtp"_key, Value(true));
  settings.Set(L"txtRZPassword"_key, Value(L"geheim-17"));
  profile.Call(L"Save", L"Base_EMAIL", L"Setting", settings);
  Sql(L"update t_Setting set FValue = 'smtp' where FName = 'MailWay'");
  const auto message = HostMessage();
  const auto package = PackageOf(message);
  package.Set(L"EmailUsers"_key, Users({16395, 16396}));
  package.Set(L"FTitle"_key, Value(L"a\r\nb"));
  package.Set(L"FMessage"_key, Value(L"一\r\n二"));
  const auto mail = ChannelOf(PreviewOf(message), L"mail");
  Sql(L"update t_Setting set FValue = 'outbox' where FName = 'MailWay'");
  profile.Call(L"Save", L"Base_EMAIL", L"Setting", usual);
  EXPECT_EQ(Show(*mail.Get(L"FComponent"_key)), "\"Jmail.Message\"");
  EXPECT_EQ(ReasonOf(mail, 16395), "gets it");
  EXPECT_EQ(Show(*mail.Get(L"Request"_key)),
            "{Charset: \"GB2312\", ContentTransferEncoding: \"base64\", Encoding: \"base64\", ISOEncodeHeaders: true, "
            "Logging: true, MailServerUserName: \"\", MailServerPassWord: \"***\", From: \"platform@example.com\", "
            "FromName: \"示范平台\", AddRecipient: [\"lina@example.com\", \"wangfang@example.com\"], "
            "Subject: \"a  b\", HTMLBody: \"一<br>二\", Send: \"mail.example.com\"}");
}

// A process can have a manifest that is asked before any class object: the preview would send in earnest, or be told
// nothing of whom the library asks about.
TEST(PreviewTest, RefusesIfAManifestAnswersForAComponent) {
  wchar_t server[MAX_PATH];
  GetModuleFileNameW(GetModuleHandleW(L"DevPlatform.dll"), server, MAX_PATH);
  const auto manifest = std::filesystem::path(server).parent_path() / L"CompanionTest.manifest";
  const auto message = ReasonsMessage();
  const std::pair<std::string, std::string> classes[] = {{"TavioAppCommand.Command", "07"},
                                                         {"TavioMSmsManager.clsBillUseInfo", "09"}};
  for (const auto& [progId, number] : classes) {
    std::ofstream(manifest) << "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">"
                               "<file name=\"DevPlatform.dll\"><comClass progid=\"" +
                                   progId + "\" clsid=\"{d2a7b4c1-53e8-4f06-9b1d-842e6c705a" + number +
                                   "}\"/></file></assembly>";
    ACTCTXW wanted = {};
    wanted.cbSize = sizeof wanted;
    wanted.lpSource = manifest.c_str();
    const HANDLE context = CreateActCtxW(&wanted);
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie));
    const auto before = Stored();
    EXPECT_EQ(Raised([&] { PreviewOf(message); }), "预览已拒绝:记录器无法拦截组件 " + progId);
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(context);
    std::filesystem::remove(manifest);
    EXPECT_TRUE(message.Read(L"MustSelectMsgUser").ToBool());
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Raised([&] { PreviewOf(message); }), "");
  }
}

TEST(PreviewTest, WritesAPageInWhichEveryValueIsText) {
  const auto message = HostMessage();
  PackageOf(message).Set(L"FTitle"_key, Value(L"<script>alert('&\"')</script>"));
  const auto preview = Preview();
  PreviewOf(message, preview);
  const auto page = Utf8(preview.Read(L"Html").ToText());
  EXPECT_EQ(page.find("<script"), std::string::npos);
  EXPECT_NE(page.find("&lt;script&gt;alert(&#39;&amp;&quot;&#39;)&lt;/script&gt;"), std::string::npos);
}

}  // namespace
}  // namespace tavio::test
