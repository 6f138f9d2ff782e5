// Message as an early-bound host calls it.

#include "com/MessageShell.h"
#include "tests/support/Foreign.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

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
    EXPECT_EQ(c.set(Record({{L"FID", 1}, {L"FMessage", L""}, {L"own", LastWords(callBack)}}).Object().Get()), S_OK);
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

}  // namespace
}  // namespace tavio::test
