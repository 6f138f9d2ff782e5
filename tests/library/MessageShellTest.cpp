// Message as an early-bound host calls it.

#include "com/MessageShell.h"
#include "tests/support/Foreign.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using MessageShellTest = LibraryTest;

// Host code, in the log, in a record of the host's or in its group, gives the text's variable and a value read before new
// texts.
TEST_F(MessageShellTest, TextIsTranslatedAsItWasGiven) {
  const auto own = Record({{L"FName", L"f"}, {L"FCaption", L"f"}, {L"FValue", L"value"}}), bound = Record({});
  ComPtr<_Message> message;
  VARIANT_BOOL done = VARIANT_FALSE;
  com::Make<com::MessageShell>(IID_PPV_ARGS(&message));
  message->putref_ClassType(bound.Object().Get());
  message->putref_TableInfo(bound.Object().Get());
  message->AddVariable(own.Object().Get(), &done);
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
                  message->putref_GroupInfo(group.Handle().AsValue().Raw());
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
