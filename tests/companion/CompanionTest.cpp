#include "companion/preview/Compose.h"
#include "companion/recorder/Secrets.h"
#include "companion/recorder/SelectOnly.h"
#include "foundation/values/InvokeByName.h"
#include "tests/companion/Platform.h"
#include "tests/support/FakeComponent.h"
#include "tests/support/Passed.h"

namespace tavio::test {
namespace {

Component Recorder() { return Component::Create(L"TavioCompanion.Recorder"); }
Component Boxes() { return Component::Create(L"TavioCompanion.Boxes"); }
Component Gateway() { return Component::Create(L"MorlaMobileOpen.MorlaSendMail"); }

std::string TextsOf(const Component& boxes) {
  std::string texts;
  const Vector shown(boxes.Read(L"Shown"));
  for (std::int32_t i = 1; i <= shown.Count(); ++i) {
    const auto box = shown.Record(i);
    texts += Utf8(box.Get(L"FText"_key)->ToText()) + "=" + Show(*box.Get(L"FAnswer"_key)) + ";";
  }
  return texts;
}

// A gateway that cannot be made leaves the mail to SMTP, for which no server is set: silence.
constexpr struct {
  const char* name;
  const wchar_t *member, *fault, *detail;  // null for the usual
  bool sent;
  const char* boxes;
} kFaultRows[] = {
    {"not created", L"", L"not created", nullptr, false, ""},
    {"missing", L"MorlaSendMail", L"missing", nullptr, false, ""},
    {"raises", L"MorlaSendMail", L"raises", L"断开", false, ""},
    {"nothing", L"MorlaSendMail", L"nothing", nullptr, true, ""},
    {"wrong type", L"MorlaSendMail", L"wrong type", nullptr, false, "发送邮件失败,请检查邮箱是否配置正确！=1;"},
    {"late", L"MorlaSendMail", L"late", L"1", true, ""},
};

TEST(RecorderTest, BreaksTheCallThatItIsToldToAndNoOther) {
  const auto message = HostMessage();
  PackageOf(message).Set(L"EmailUsers"_key, Users({16395}));
  const auto send = [&] { return message.Call(L"SendEmail", Value(ComPtr<IDispatch>())).ToBool(); };
  for (const auto& [name, member, fault, detail, sent, shown] : kFaultRows) {
    const auto recorder = Recorder(), boxes = Boxes();
    recorder.Call(L"Break", L"MorlaMobileOpen.MorlaSendMail", member, std::int32_t{2}, fault,
                  detail ? Value(detail) : Value::Missing());
    recorder.Call(L"Trace");
    boxes.Call(L"Start");
    EXPECT_TRUE(send()) << name;
    EXPECT_EQ(send(), sent) << name;
    EXPECT_TRUE(send()) << name;
    EXPECT_EQ(TextsOf(boxes), shown) << name;
  }
  EXPECT_TRUE(send());
  const auto refusal = [](const wchar_t* progId, const wchar_t* fault) {
    return Raised([&] { Recorder().Call(L"Break", progId, L"", std::int32_t{1}, fault, Value::Missing()); });
  };
  EXPECT_EQ(refusal(L"X", L"foo"),
            "Unknown fault 'foo'; there are: not created, missing, raises, nothing, wrong type, late");
  EXPECT_TRUE(refusal(L"X", L"late").starts_with("Unknown component 'X'; there are: TavioSharedProps.PropStore, "));
}

// Whether the component is the platform's own again.
bool IsStoodBefore() {
  const IID recorded = {0x8c1f5e20, 0x7b3a, 0x4d69, {0xa2, 0xc4, 0x1e, 0x9b, 0x60, 0xd7, 0xf3, 0xa1}};
  ComPtr<IUnknown> own;
  return SUCCEEDED(Gateway().Object()->QueryInterface(recorded, reinterpret_cast<void**>(own.GetAddressOf())));
}

TEST(RecorderTest, TakesEverythingBackHoweverItEnds) {
  Component recorder{nullptr};
  // A host's own package: the gateway asks it for its fields, and it lets the recorder go.
  FakeObject faithless;
  faithless.On(L"Lookup", [] { return true; });
  faithless.On(L"GetValue", [&] {
    recorder = Component(nullptr);
    return L"x";
  });
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"let go", [&] { recorder = Component(nullptr); }},
      {"started twice",
       [&] {
         EXPECT_EQ(Raised([] { Recorder().Call(L"Trace"); }), "A recorder is running already; stop it first");
         EXPECT_TRUE(IsStoodBefore());
         recorder.Call(L"Stop");
       }},
      {"let go by a component that it called",
       [&] { EXPECT_NE(Gateway().Call(L"MorlaSendMail", Value(faithless.New())).ToText(), L""); }},
  };
  for (const auto& [name, end] : rows) {
    recorder = Recorder();
    recorder.Call(L"Trace");
    const auto kept = Gateway();
    EXPECT_TRUE(IsStoodBefore()) << name;
    end();
    EXPECT_FALSE(IsStoodBefore()) << name;
    EXPECT_NE(kept.Call(L"MorlaSendMail", Dictionary::New()).ToText(), L"") << name;
  }
}

// With so many references to an unset object.
std::string CallWildly(WORD flags, std::size_t arguments) {
  Value unset{ComPtr<IDispatch>()};
  VARIANT argument = Typed(unset);
  return Raised([&] { InvokeByName(Gateway().Object().Get(), L"MorlaSendMail", flags, {&argument, arguments}); });
}

// Whatever a caller does to a component, it fails or succeeds as it does without the recorder.
TEST(RecorderTest, AnswersWildCallsAsTheComponentDoes) {
  const std::pair<WORD, std::size_t> calls[] = {{DISPATCH_METHOD, 0}, {DISPATCH_METHOD, 1}, {DISPATCH_PROPERTYPUT, 1}};
  for (const auto& [flags, arguments] : calls) {
    const auto expected = CallWildly(flags, arguments);
    const auto recorder = Recorder();
    recorder.Call(L"Trace");
    EXPECT_EQ(CallWildly(flags, arguments), expected) << flags << " with " << arguments;
    const auto none = Gateway().Object()->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(none, E_POINTER);
  }
}

TEST(RecorderTest, MasksSecretsWhereverTheyTravel) {
  Sql(L"update t_Setting set FValue = '1' where FName = 'LogEnabled'");
  const auto recorder = Recorder();
  recorder.Call(L"Break", L"Jmail.Message", L"Send", std::int32_t{1}, L"raises", L"Pwd=gh;");
  recorder.Call(L"DryRun");
  const auto mail = Component::Create(L"Jmail.Message");
  mail.Assign(L"MailServerPassWord", Value(L"geheim-17"));
  mail.Call(L"AddRecipient", L"geheim-17@example.com");
  EXPECT_EQ(Raised([&] { mail.Call(L"Send", L"x"); }), "Pwd=gh;");
  Sql(L"select 'Pwd=abcde;' as F from t_User");
  recorder.Call(L"Stop");
  const auto json = Utf8(recorder.Read(L"Json").ToText()) + Utf8(recorder.Read(L"Text").ToText());
  EXPECT_NE(json.find("***@example.com"), std::string::npos);
  EXPECT_NE(json.find("ConnectString={***}"), std::string::npos);
  for (const auto* secret : {"geheim", "Pwd=gh", "abcde"}) EXPECT_EQ(json.find(secret), std::string::npos) << secret;
  EXPECT_EQ(companion::WithoutSecrets(L"failed: Pwd=gh;User=gh"), L"failed: Pwd=***;User=gh");
}

constexpr std::pair<const wchar_t*, bool> kStatements[] = {
    {L"select 'INTO ;' as a, \"--\" from t;", true},
    {L"SELECT FIntoX, INTO_2 FROM t", true},
    {L"SELECT (1)INTO t", false},
    {L"SELECT 'a'INTO t", false},
    {L"SELECT 1 INTO\"t\"", false},
    {L"SELECT 1INTO t", false},
    {L"SELECT [a'] INTO t, 'b', [c']", false},
    {L"SELECT 1; DROP TABLE t", false},
    {L"SELECT 1 -- '", false},
    {L"UPDATE t SET a = 1", false},
};

TEST(RecorderTest, PassesOnOneSelectThatOnlyReads) {
  for (const auto& [sql, reads] : kStatements) EXPECT_EQ(companion::IsSelectOnly(sql), reads) << Utf8(sql);
}

TEST(BoxesTest, AnswerTheDialogAndTheQuestionsByRules) {
  const auto message = HostMessage();
  PackageOf(message).Set(L"MessageUsers"_key, Users({16395}));
  message.Assign(L"MustSelectMsgUser", Value(true));
  message.Assign(L"Data", Dictionary::New().AsValue());
  const auto actions = companion::LoadedActions(1005);
  const auto boxes = Boxes();
  boxes.Call(L"Start");
  EXPECT_FALSE(message.Call(L"SendMessage").ToBool());
  boxes.Assign(L"DialogSends", Value(true));
  EXPECT_TRUE(message.Call(L"SendMessage").ToBool());
  actions.Call(L"RemoveAll");
  const Dictionary save(actions.Call(L"Item", L"Save"));
  EXPECT_EQ(Show(*save.Get(L"FStatus"_key)), "0");
  boxes.Call(L"AnswerWith", L"删除全部操作", std::int32_t{IDYES});
  actions.Call(L"RemoveAll");
  EXPECT_EQ(Show(*Dictionary(actions.Call(L"Item", L"Save")).Get(L"FStatus"_key)), "4");
  const std::string question = "如果删除全部操作，系统会重新加载预定义操作给单据，仍然确定要删除吗?";
  EXPECT_EQ(TextsOf(boxes), "李娜=2;李娜=1;" + question + "=7;" + question + "=6;");
}

}  // namespace
}  // namespace tavio::test
