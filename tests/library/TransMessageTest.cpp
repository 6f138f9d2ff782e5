#include "message/Message.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

struct Flags {
  bool caption = false, value = false, name = false;

  bool operator==(const Flags&) const = default;
};
constexpr Flags kCaption = {true, false, false}, kValue = {false, true, false}, kName = {false, false, true};

class TransMessageTest : public LibraryTest {
 protected:
  TransMessageTest() {
    message.ClassType(Record({}));
    message.TableInfo(Record({}));
    const auto add = [&](const wchar_t* name, const Item& caption, const Item& value) {
      message.AddVariable(Record({{L"FName", name}, {L"FCaption", caption}, {L"FValue", value}}));
    };
    add(L"no", L"单号", 5);
    add(L"date", L"Date", L"[no]");
    add(L"open", L"单号", L"");
    add(L"void", Value(), Value());
    add(L"bare", L"", L"");
    for (const auto* key : {L"FCaption", L"FValue"}) {
      PackageAt(message.GetVariableList(), L"bare"_key).Remove(Key(TextView(key)));
    }
    log->entries.clear();
  }

  Text Trans(TextView text, Flags flags) { return message.TransMessage(text, flags.caption, flags.value, flags.name); }

  Message message;
};

TEST_F(TransMessageTest, EachNameIsTranslatedAsTheModeSays) {
  const auto values = Record({{L"no", 7}, {L"bare", 2.5}});
  const auto editing = Record({{L"no", 7}, {L"bare", 2.5}, {L"FCode", L"mnuEditUse"}});
  const struct {
    Flags mode;
    Dictionary group;
    const wchar_t* text;
    const wchar_t* translation;
  } cases[] = {
      {kCaption, {}, L"a[no]b[none][date]", L"a[单号]b[none][Date]"},
      {kCaption, {}, L"[bare][NO][ no][][void]", L"[bare][NO][ no][][]"},
      {kValue, {}, L"[no][date][open][bare][none][void]", L"5[no][bare][none]"},
      {kValue, values, L"[no][open][bare][none]", L"52.5[none]"},
      {kValue, editing, L"[no][bare][open][FCode]", L"72.5[open][FCode]"},
      {kValue, ForeignRecord(values).Handle(), L"[no][open][bare][none]", L"52.5[none]"},
      {kName, {}, L"[单号][DATE][date][no]", L"[no][date][date][no]"},
      {kValue, {}, L"]a[b[no]c]", L"]a[b[no]c]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    message.GroupInfo(c.group);
    EXPECT_EQ(Utf8(Trans(c.text, c.mode)), Utf8(c.translation));
  }
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.Message.TransMessage 翻译消息 1");
}

TEST_F(TransMessageTest, FlagsAreSettledForTheCaller) {
  const struct {
    Flags given, settled;
    const wchar_t* translation;
  } cases[] = {
      {{true, true, false}, kCaption, L"[单号]"},
      {{false, true, true}, kName, L"[no]"},
      {kValue, kValue, L"5"},
  };
  for (const auto& c : cases) {
    auto flags = c.given;
    EXPECT_EQ(message.TransMessage(L"[no]", flags.caption, flags.value, flags.name), c.translation);
    EXPECT_EQ(flags, c.settled) << &c - cases;
  }
}

TEST_F(TransMessageTest, UnreadableVariablesEmptyTheResult) {
  message.GetVariableList().Set(L"no"_key, Record({{L"FValue", Record({})}}).AsValue());
  EXPECT_EQ(Trans(L"a[open]b[no]c", kValue), L"");
  EXPECT_EQ(boxes.Take(), Boxes{Warning(L"TavioClassBillAction.Message : TransMessage\r\n类型不匹配")});
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.Message.TransMessage 翻译消息 0");
}

}  // namespace
}  // namespace tavio::test
