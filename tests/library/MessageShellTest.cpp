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

TEST_F(MessageShellTest, TextIsTranslatedAsItWasGiven) {
  BString text(L"[f] given");
  std::vector<BString> others;
  log->On(L"LogStart", [&] {
    text = BString(L"[f] after");
    // One of them gets the room of the old one.
    for (int i = 0; i < 16; ++i) others.emplace_back(L"[f] other");
    return 1;
  });
  VARIANT_BOOL value = VARIANT_TRUE;
  BString translation;
  EXPECT_EQ(message->TransMessage(text.Get(), nullptr, &value, nullptr, translation.Receive()), S_OK);
  EXPECT_EQ(Utf8(translation.View()), "[f] given");
}

}  // namespace
}  // namespace tavio::test
