// Message as an early-bound host calls it.

#include "com/MessageShell.h"
#include "tests/support/Foreign.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

// An object of a host's that calls back when it is let go.
class LastWord final : public LateBound {
 public:
  static ComPtr<IDispatch> New(std::function<void()> say) {
    ComPtr<IDispatch> object;
    *object.GetAddressOf() = new LastWord(std::move(say));
    return object;
  }

 private:
  explicit LastWord(std::function<void()> say) : say_(std::move(say)) {}
  ~LastWord() override { say_(); }

  std::function<void()> say_;
};

VARIANT Borrowed(IDispatch* object) {
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = VT_DISPATCH;
  variant.pdispVal = object;
  return variant;
}

class MessageShellTest : public LibraryTest {
 protected:
  MessageShellTest() {
    com::Make<com::MessageShell>(IID_PPV_ARGS(&message));
    message->putref_ClassType(Given(Record({})));
    message->putref_TableInfo(Given(Record({})));
  }

  // The host's reference on a package, which lives as long as the test.
  IDispatch* Given(const Dictionary& record) { return given_.emplace_back(record.Object()).Get(); }
  IDispatch* Given(const Vector& list) { return given_.emplace_back(list.Object()).Get(); }

  ComPtr<_Message> message;
  VARIANT_BOOL done = VARIANT_FALSE;

 private:
  std::vector<ComPtr<IDispatch>> given_;
};

TEST_F(MessageShellTest, WhatIsReplacedMayCallBackAsItGoes) {
  const struct {
    const char* property;
    std::function<HRESULT(IDispatch*)> set;
  } cases[] = {
      {"SetMessage", [&](IDispatch* package) { return message->SetMessage(package, &done); }},
      {"Data", [&](IDispatch* package) { return message->putref_Data(package); }},
      {"ClassType", [&](IDispatch* package) { return message->putref_ClassType(package); }},
      {"TableInfo", [&](IDispatch* package) { return message->putref_TableInfo(package); }},
      {"GroupInfo", [&](IDispatch* package) { return message->putref_GroupInfo(Borrowed(package)); }},
      {"SelectedUser", [&](IDispatch* package) { return message->putref_SelectedUser(package); }},
      {"RefreshVariableValue", [&](IDispatch* p) { return message->RefreshVariableValue(&p, &done); }},
  };
  props->props = L"";  // nothing is sent
  ForeignRecord foreign(Record({{L"FID", 1}, {L"FCode", L"x"}, {L"FMessage", L""}}));
  for (const auto& c : cases) {
    SCOPED_TRACE(c.property);
    int calledBack = 0;
    const auto callBack = [&] {
      ++calledBack;
      LONG user = 5;
      VARIANT_BOOL caption = VARIANT_FALSE, value = VARIANT_TRUE, name = VARIANT_FALSE;
      BString text;
      ComPtr<IDispatch> selected;
      message->AddUser(&user, &done);
      message->RefreshVariableList();
      message->TransMessage(BString(L"[f]").Get(), &caption, &value, &name, text.Receive());
      message->SendMessage(nullptr, &done);
      message->get_SelectedUser(&selected);
      static_cast<void>(Dictionary(selected) && Dictionary(selected).Count());
    };
    EXPECT_EQ(c.set(Record({{L"FID", 1}, {L"FMessage", L""}, {L"own", LastWord::New(callBack)}}).Object().Get()), S_OK);
    EXPECT_EQ(c.set(foreign.Handle().Object().Get()), S_OK);
    EXPECT_EQ(calledBack, 1);
    boxes.Take();  // of the sending
  }
}

// Host code, in the log, in a record of the host's or in its group, gives the text's variable and a value read before new
// texts.
TEST_F(MessageShellTest, TextIsTranslatedAsItWasGiven) {
  const auto own = Record({{L"FName", L"f"}, {L"FCaption", L"f"}, {L"FValue", L"value"}});
  message->AddVariable(Given(own), &done);
  ComPtr<IDispatch> list;
  message->GetVariableList(&list);
  const Dictionary variables(list);
  ForeignRecord hosts(Record({{L"FValue", L"host"}})), group(Record({{L"FCode", L"x"}}));
  variables.Set(L"h"_key, hosts.Handle());
  BString text;
  std::vector<BString> others;
  const auto change = [&] {
    text = BString(L"[f] [h] after");
    Dictionary(*variables.Get(L"f"_key)).Set(L"FValue"_key, Value(L"after"));
    // Some of them get the room of the old ones.
    for (int i = 0; i < 16; ++i) others.emplace_back(i % 2 ? L"[f] [h] other" : L"other");
    return true;
  };
  const struct {
    const char* row;
    std::function<void()> arrange;
    const char* translation;
  } cases[] = {{"the log", [&] { log->On(L"LogStart", change); }, "after host given"},
               {"a host's record",
                [&] {
                  log->On(L"IsEnabled", [] { return false; });
                  hosts.On(L"Lookup", change);
                  message->NewMessage();  // whereupon the log is let go
                },
                "value host given"},
               {"the host's group",
                [&] {
                  hosts.On(L"Lookup", [] { return true; });
                  group.On(L"Lookup", change);
                  message->putref_GroupInfo(Borrowed(group.Handle().Object().Get()));
                },
                "after host given"}};
  for (const auto& c : cases) {
    Dictionary(*variables.Get(L"f"_key)).Set(L"FValue"_key, Value(L"value"));
    variables.Set(L"h"_key, hosts.Handle());
    c.arrange();
    text = BString(L"[f] [h] given");
    VARIANT_BOOL value = 1;
    BString translation;
    EXPECT_EQ(message->TransMessage(text.Get(), nullptr, &value, nullptr, translation.Receive()), S_OK);
    EXPECT_EQ(Utf8(translation.View()), c.translation) << c.row;
    EXPECT_EQ(value, 1) << "as it was, which is true";
  }
}

class EachMemberTest : public MessageShellTest {
 protected:
  EachMemberTest() {
    props->props = L"UserID=16394;ConnectString=x;";
    command_.On(L"SendMessage", [this](Arguments& a) {
      did_ += " " + Show(a.At(3)) + " " + Utf8(a.At(8).ToText());
      for (const auto user : a.At(4).ToIntegers()) did_ += " " + std::to_string(user);
    });
    users_.On(L"GetUserInfo", [this](Arguments& a) { did_ += " " + Show(a.At(2)); });
    users_.On(L"GetIsUserNeedSend", [this](Arguments& a) { did_ += " " + Show(a.At(1)); });
    const auto field = Record({{L"FKey", L"f"}, {L"FCaption", L"名"}, {L"FNeedSave", 1}, {L"FVisible", 1}});
    field.Set(L"FLookUpType"_key, Value(7));
    message->put_ClassTypeID(7);
    message->putref_Data(Given(Record({{L"Page1", Record({{L"f", 9}})}})));
    message->putref_TableInfo(Given(Record({{L"f", field}, {L"Page1", Record({{L"f", 1}})}})));
    message->putref_GroupInfo(Borrowed(Given(Record({{L"f", L"组"}}))));
    message->putref_ExcludeUser(Given(List({5})));
    message->putref_ClassTypeEntry(Given(List({3})));  // which nothing reads
    message->putref_SelectedUser(selected);
  }

  // The operations that were logged since the last call, and what was asked of the platform.
  std::string Did() {
    std::string did;
    for (const auto& entry : std::exchange(log->entries, {})) {
      const auto name = entry.rfind("Message.") + 8;
      if (entry.starts_with("begin ")) did += entry.substr(name, entry.find(' ', name) - name) + ' ';
    }
    return did + std::exchange(did_, {});
  }
  template <class Get>
  std::string Got(Get get) {
    ComPtr<IDispatch> package;
    EXPECT_EQ(get(package.GetAddressOf()), S_OK);
    return Show(Dictionary(package));
  }

  IDispatch* selected = Given(Record({{L"8", 1}}));

 private:
  FakeComponent command_{L"TavioAppCommand.Command"}, users_{L"TavioMSmsManager.clsBillUseInfo"};
  std::string did_;
};

TEST_F(EachMemberTest, IsToldByWhatOnlyItDoes) {
  const auto package = Record({{L"FID", 1},
                               {L"FTitle", L"题"},
                               {L"FMessage", L"[no]"},
                               {L"MessageUsers", Record({{L"3", 1}, {L"5", 1}})},
                               {L"EmailUsers", Record({{L"21", 1}})},
                               {L"SMSUsers", Record({{L"22", 1}})}});
  auto* bill = Given(Record({{L"FID", 77}}));
  LONG user = 25;
  const struct {
    const char* member;
    std::function<HRESULT()> call;
    bool answer;
    const char* did;
  } cases[] = {
      {"NewMessage", [&] { return message->NewMessage(); }, false, "NewMessage "},
      {"RefreshVariableList", [&] { return message->RefreshVariableList(); }, false, "RefreshVariableList "},
      {"AddUser", [&] { return message->AddUser(&user, &done); }, true, "AddUser "},
      {"RemoveUser", [&] { return message->RemoveUser(&user, &done); }, true, "RemoveUser "},
      {"SetMessage", [&] { return message->SetMessage(Given(package), &done); }, true, "TransMessage "},
      {"RefreshVariableValue", [&] { return message->RefreshVariableValue(&bill, &done); }, true,
       "RefreshVariableValue "},
      {"SendMessage", [&] { return message->SendMessage(nullptr, &done); }, true,
       R"(SendMessage TransMessage  "题" FUNCID:-1|FFlag:7|FInterID:77 3 9)"},
      {"SendMessage, given",
       [&] {
         return message->SendMessage(Given(Record({{L"4", 1}})), &done);
       },
       true, R"(SendMessage TransMessage  "题" FUNCID:-1|FFlag:7|FInterID:77 4 9)"},
      {"SendEmail", [&] { return message->SendEmail(nullptr, &done); }, false, " [{FUserID: 21}]"},
      {"SendShortMessage", [&] { return message->SendShortMessage(&done); }, false, " [{FUserID: 22}]"},
      {"SendSMS", [&] { return message->SendSMS(&done); }, false, "SendSMS  [{FID: 77, FUserID: 3}]"},
      {"RemoveAllUsers", [&] { return message->RemoveAllUsers(&done); }, false, ""},
      {"AddVariable",
       [&] {
         return message->AddVariable(Given(Record({{L"FName", L"no"}, {L"FCaption", L"号"}})), &done);
       },
       true, "AddVariable "},
  };
  for (const auto& c : cases) {
    done = VARIANT_FALSE;
    EXPECT_EQ(c.call(), S_OK) << c.member;
    EXPECT_EQ(done == VARIANT_TRUE, c.answer) << c.member;
    EXPECT_EQ(Did(), c.did) << c.member;
  }
  EXPECT_EQ(Got([&](IDispatch** p) { return message->GetMessage(p); }), Show(package));
  EXPECT_EQ(Show(*package.Get(L"MessageUsers"_key)), "{}");
  EXPECT_EQ(Got([&](IDispatch** p) { return message->get_SelectedUser(p); }), "{8: 1}");
  EXPECT_EQ(Got([&](IDispatch** p) { return message->GetVariableUser(p); }), R"({f: {FName: "f", FCaption: "名"}})");
  EXPECT_EQ(Got([&](IDispatch** p) { return message->GetVariableList(p); }),
            R"({f: {FName: "f", FCaption: "名"}, no: {FName: "no", FCaption: "号", FValue: ""}})");
}

TEST_F(EachMemberTest, ScalarsAndFlagsKeepTheirPlaces) {
  LONG id = 0;
  EXPECT_EQ(message->get_ClassTypeID(&id), S_OK);
  EXPECT_EQ(id, 7);
  for (const auto wanted : {VARIANT_TRUE, VARIANT_FALSE}) {
    VARIANT_BOOL must = wanted ? VARIANT_FALSE : VARIANT_TRUE;
    message->put_MustSelectMsgUser(wanted);
    EXPECT_EQ(message->get_MustSelectMsgUser(&must), S_OK);
    EXPECT_EQ(must, wanted);
  }
  message->RefreshVariableList();
  const struct {
    const char* followed;
    VARIANT_BOOL caption, value, name;
    const wchar_t *text, *translation;
  } cases[] = {
      {"caption", VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE, L"[f]", L"[名]"},
      {"value", VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE, L"[f]", L"组"},
      {"name", VARIANT_TRUE, VARIANT_FALSE, VARIANT_TRUE, L"[名]", L"[f]"},
  };
  for (auto c : cases) {
    BString text;
    message->TransMessage(BString(c.text).Get(), &c.caption, &c.value, &c.name, text.Receive());
    EXPECT_EQ(Utf8(text.View()), Utf8(c.translation)) << c.followed;
    EXPECT_EQ(std::string(c.caption ? "caption" : "") + (c.value ? "value" : "") + (c.name ? "name" : ""), c.followed);
  }
}

}  // namespace
}  // namespace tavio::test
