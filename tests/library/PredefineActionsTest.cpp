#include "catalogues/PredefineActions.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

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
      return catalogue.AsValue();
    });
  }

  FakeComponent classInfo{L"TavioMClass.ClassInfo"};
  Vector catalogue = List({Record({{L"FCode", L"Save"}, {L"FBillType", 1}, {L"FRightMask", 4}}),
                           Record({{L"FCode", L"Check"}, {L"FBillType", 0x40000003}, {L"FRightMask", Short(16)}}),
                           Record({{L"FCode", L"Save"}, {L"FBillType", Short(2)}}), Record({{L"FName", L"无编码"}})});
  PredefineActions actions;
};

TEST_F(PredefineActionsTest, FindsTheFirstRecordOfExactlyThatCode) {
  EXPECT_EQ(actions.Item(L"Save").Object().Get(), catalogue.Record(1).Object().Get());
  EXPECT_TRUE(actions.LookUp(L"Check"));
  for (const auto* other : {L"save", L"Save "}) EXPECT_FALSE(actions.LookUp(other)) << Utf8(other);
  EXPECT_EQ(actions.GetList().Object().Get(), catalogue.Object().Get());
  EXPECT_EQ(classInfo.Calls(L"getpredefineactions"), 1);
  EXPECT_EQ(log->entries, std::vector<std::string>{});
  catalogue.Add(Value(L"Print"));
  EXPECT_FALSE(actions.Item(L"Print"));
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"Item", L"类型不匹配")});
}

TEST_F(PredefineActionsTest, DefaultsAreCopiesOfThoseOfTheBillType) {
  for (const auto& [billType, codes] :
       {std::pair{1, "Save Check "}, {2, "Check Save "}, {3, ""}, {31, "Check "}, {0, ""}, {-5, ""}}) {
    EXPECT_EQ(Codes(actions.GetDefaultActions(billType)), codes) << billType;
  }
  EXPECT_FALSE(actions.GetDefaultActions(32));
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"GetDefaultActions", L"溢出")});
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

}  // namespace
}  // namespace tavio::test
