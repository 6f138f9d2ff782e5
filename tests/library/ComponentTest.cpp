#include "foundation/Component.h"
#include "foundation/Error.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using ComponentTest = LibraryTest;
using ValueTest = LibraryTest;

// What `convert` answers, or the description of what it raises.
template <class Convert>
std::string Outcome(Convert&& convert) {
  try {
    return Show(Item(convert()).value);
  } catch (const Error& error) {
    return Utf8(error.Description());
  }
}

TEST_F(ValueTest, ConversionsFollowThePlatform) {
  const struct {
    Item stored;
    const char *asShort, *asLong, *asBool, *asText;
  } cases[] = {
      {Value(), "0s", "0", "false", R"("")"},
      {Value::Missing(), "类型不匹配", "类型不匹配", "类型不匹配", "类型不匹配"},
      {Short(-7), "-7s", "-7", "true", R"("-7")"},
      {32768, "溢出", "32768", "true", R"("32768")"},
      {true, "-1s", "-1", "true", R"("True")"},
      {-2.5, "-2s", "-2", "true", R"("-2.5")"},
      {3e9, "溢出", "溢出", "true", R"("3000000000")"},
      {L"70000", "溢出", "70000", "true", R"("70000")"},
      {L"保存", "类型不匹配", "类型不匹配", "类型不匹配", R"("保存")"},
      {Record({}), "类型不匹配", "类型不匹配", "类型不匹配", "类型不匹配"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(Show(c.stored.value));
    EXPECT_EQ(Outcome([&] { return c.stored.value.ToInt16(); }), c.asShort);
    EXPECT_EQ(Outcome([&] { return c.stored.value.ToInt32(); }), c.asLong);
    EXPECT_EQ(Outcome([&] { return c.stored.value.ToBool(); }), c.asBool);
    EXPECT_EQ(Outcome([&] { return c.stored.value.ToText(); }), c.asText);
  }
}

TEST_F(ComponentTest, ReferencesGoOutTypedAndComeBack) {
  FakeObject fake;
  const auto other = Record({{L"a", 1}});
  fake.On(L"Change", [&](Arguments& a) {
    const VARTYPE expected[] = {VT_I4, VT_BOOL, VT_BSTR, VT_DISPATCH};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(a.Raw(i).vt, VT_BYREF | expected[i]) << i;
    EXPECT_EQ(a.Raw(4).vt, VT_BSTR);
    a.Return(0, Value(L"12"));
    a.Return(1, Value(true));
    a.Return(2, Value(L"新"));
    a.Return(3, other.AsValue());
    return Value(TextView(a.At(2).ToText() + a.At(4).ToText()));
  });
  fake.On(L"Nonsense", [&](Arguments& a) { return a.Return(0, Value(fake.New())), Value(); });
  std::int32_t number = 1;
  bool flag = false;
  Text text = L"旧";
  auto package = Record({});
  const Component component(fake.New());
  const auto result = component.Call(L"change", ByRef(number), ByRef(flag), ByRef(text), ByRef(package), L"!");
  EXPECT_EQ(Show(result), R"("新!")");
  EXPECT_EQ(Show(List({number, flag, text, package})), R"([12, true, "新", {a: 1}])");
  EXPECT_EQ(package.Object().Get(), other.Object().Get());
  EXPECT_EQ(Outcome([&] { return component.Call(L"Nonsense", ByRef(package)); }), "类型不匹配");
  EXPECT_EQ(Show(package), "{a: 1}");
}

TEST_F(ComponentTest, FailureKeepsTheComponentsOwnWords) {
  FakeComponent fake(L"Tavio.Fake");
  fake.On(L"Save", [](Arguments&) -> Value { throw Error(static_cast<HRESULT>(0x80040123), L"Platform", L"断开"); });
  const auto component = Component::Create(L"Tavio.Fake");
  try {
    component.Call(L"Save");
    FAIL() << "nothing was raised";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), static_cast<HRESULT>(0x80040123));
    EXPECT_EQ(error.Source(), L"Platform");
    EXPECT_EQ(error.Description(), L"断开");
  }
  EXPECT_EQ(Outcome([&] { return component.Call(L"Load"); }), "对象不支持该属性或方法");
  EXPECT_EQ(Outcome([] { return Component(nullptr).Call(L"Save"); }), "对象未设置");
  EXPECT_EQ(Outcome([] { return Component::Create(L"Tavio.Missing").Call(L"Save"); }), "不能创建组件 Tavio.Missing");
}

}  // namespace
}  // namespace tavio::test
