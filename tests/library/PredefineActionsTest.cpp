#include <functional>

#include "catalogues/PredefineActions.h"
#include "foundation/Error.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();

Box Report(const wchar_t* operation, const wchar_t* description) {
  return Warning(Text(L"TavioClassBillAction.PredefineActions : ") + operation + L"\r\n" + description);
}

std::string Codes(const Vector& list) {
  if (!list) return "none";
  std::string codes;
  for (std::int32_t i = 1; i <= list.Count(); ++i) codes += Utf8(list.Record(i).Get(L"FCode"_key)->ToText()) + " ";
  return codes;
}

class PredefineActionsTest : public LibraryTest {
 protected:
  PredefineActionsTest() {
    classInfo.On(L"getpredefineactions", [this](Arguments& a) {
      EXPECT_EQ(Show(a.At(0)), '"' + Utf8(props->props) + '"');
      if (!answers) throw Error(E_FAIL, L"ClassInfo", L"中间层没有启动");
      return catalogue.AsValue();
    });
  }

  FakeComponent classInfo{L"TavioMClass.ClassInfo"};
  bool answers = true;
  Vector catalogue = List({Record({{L"FCode", L"Save"}, {L"FBillType", 1}, {L"FRightMask", 4}}),
                           Record({{L"FCode", L"Check"}, {L"FBillType", 0x40000003}, {L"FRightMask", Short(16)}}),
                           Record({{L"FCode", L"Save"}, {L"FBillType", Short(2)}}), Record({{L"FName", L"无编码"}})});
  PredefineActions actions;
};

TEST_F(PredefineActionsTest, FindsTheFirstRecordOfExactlyThatCode) {
  const struct {
    const wchar_t* code;
    std::int32_t position;  // 0 for none
  } cases[] = {{L"Save", 1}, {L"Check", 2}, {L"save", 0}, {L"Save ", 0}, {L"", 4}};
  for (const auto& c : cases) {
    const auto expected = c.position ? catalogue.Record(c.position) : Dictionary();
    EXPECT_EQ(actions.Item(c.code).Object().Get(), expected.Object().Get()) << Utf8(c.code);
    EXPECT_EQ(actions.LookUp(c.code), c.position != 0) << Utf8(c.code);
  }
  EXPECT_EQ(actions.GetList().Object().Get(), catalogue.Object().Get());
  EXPECT_EQ(classInfo.Calls(L"getpredefineactions"), 1);
  EXPECT_EQ(log->entries, std::vector<std::string>{});
  catalogue.Add(Value(L"Print"));
  EXPECT_FALSE(actions.Item(L"Print"));
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"Item", L"类型不匹配")});
}

TEST_F(PredefineActionsTest, EveryOperationTriesAgainAfterAFailedLoad) {
  const auto failedLoad = Report(L"Initialize ", L"中间层没有启动");
  const auto unset = [](const wchar_t* operation) { return Report(operation, L"对象未设置"); };
  const struct {
    std::function<bool(PredefineActions&)> run;
    Boxes boxes;
  } cases[] = {
      {[](auto& a) { return !!a.Item(L"Save"); }, {failedLoad, unset(L"Item")}},
      {[](auto& a) { return a.LookUp(L"Save"); }, {failedLoad, unset(L"LookUp")}},
      {[](auto& a) { return !!a.GetDefaultActions(1); }, {failedLoad, unset(L"GetDefaultActions")}},
      {[](auto& a) { return !!a.GetList(); }, {failedLoad}},
      {[](auto& a) { return a.LookupRightMask(4); }, {failedLoad}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    PredefineActions fresh;
    answers = false;
    EXPECT_FALSE(c.run(fresh));
    EXPECT_EQ(boxes.Take(), c.boxes);
    EXPECT_EQ(classInfo.Living(), 0);
    answers = true;
    EXPECT_TRUE(c.run(fresh));
  }
}

TEST_F(PredefineActionsTest, DefaultsAreCopiesOfThoseOfTheBillType) {
  const struct {
    std::int32_t billType;
    const char* codes;
  } cases[] = {{1, "Save Check "}, {2, "Check Save "}, {3, ""}, {31, "Check "}, {0, ""}, {-5, ""}, {kLowest + 1, ""}};
  for (const auto& c : cases) EXPECT_EQ(Codes(actions.GetDefaultActions(c.billType)), c.codes) << c.billType;
  for (const auto beyond : {32, kLowest}) {
    EXPECT_FALSE(actions.GetDefaultActions(beyond)) << beyond;
    EXPECT_EQ(boxes.Take(), Boxes{Report(L"GetDefaultActions", L"溢出")}) << beyond;
  }
  const auto messages = Record({});
  catalogue.Record(1).Set(L"Messages"_key, messages);
  const auto copy = actions.GetDefaultActions(1).Record(1);
  EXPECT_NE(copy.Object().Get(), catalogue.Record(1).Object().Get());
  EXPECT_EQ(PackageAt(copy, L"Messages"_key).Object().Get(), messages.Object().Get());
}

TEST_F(PredefineActionsTest, RightMasksAreLookedUpSilently) {
  EXPECT_TRUE(actions.LookupRightMask(4));
  EXPECT_TRUE(actions.LookupRightMask(16));
  EXPECT_TRUE(actions.LookupRightMask(0));  // of a record that has none
  EXPECT_FALSE(actions.LookupRightMask(20));
  catalogue.Add(Record({{L"FRightMask", L"none"}}));
  catalogue.Add(Record({{L"FRightMask", 32}}));
  EXPECT_TRUE(actions.LookupRightMask(4));
  EXPECT_FALSE(actions.LookupRightMask(32));  // behind the record that ends the walk
}

TEST_F(PredefineActionsTest, SetListTakesTheVectorItself) {
  const auto own = List({Record({{L"FCode", L"Own"}})});
  EXPECT_TRUE(actions.SetList(own.AsValue()));
  EXPECT_TRUE(actions.SetList(Value(L"no list")));
  EXPECT_EQ(actions.GetList().Object().Get(), own.Object().Get());
  EXPECT_TRUE(actions.LookUp(L"Own"));
  EXPECT_EQ(classInfo.Created(), 0);
}

}  // namespace
}  // namespace tavio::test
