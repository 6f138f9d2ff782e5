#include "actions/BillActions.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

const wchar_t kQuestion[] = L"如果删除全部操作，系统会重新加载预定义操作给单据，仍然确定要删除吗?";

Box Report(const Text& operation, const Text& description) {
  return Warning(L"TavioClassBillAction.BillActions" + operation + L"\r\n" + description);
}

class BillActionEditingTest : public LibraryTest {
 protected:
  // The collection of the object, which stays bound.
  void Hold(const Dictionary& collection) {
    actions.SetBillActions(collection);
    boxes.Take();
    actions.ClassTypeID(7);
  }
  std::string Held() { return Show(actions.GetBillActions()); }

  BillActions actions;
};

TEST_F(BillActionEditingTest, StoresACopyWithTheStoredIdentity) {
  const auto stored = [](const Item& status) {
    return Record({{L"Save", Record({{L"FCode", L"Save"}, {L"FID", 5}, {L"FStatus", status}})}});
  };
  const auto save = Record({{L"FCode", L"Save"}});
  const auto withMessages = Record({{L"FCode", L"Save"}, {L"Messages", Record({{L"new", 1}})}});
  const auto renamed = Record({{L"FCode", L"Keep"}, {L"FCode_Old", L"Save"}, {L"FID", 9}});
  const auto known = Record({{L"x", Record({{L"FCode", L"Save"}, {L"FID", 5}, {L"Messages", Record({{L"old", 1}})}})}});
  const struct {
    Dictionary collection;
    Dictionary action;
    const char* afterAddNew;
    const char* afterUpdate;
  } cases[] = {
      {Dictionary(), save, R"({Save: {FCode: "Save", FID: 0, FStatus: 1, Messages: none}})", nullptr},
      {Dictionary(), withMessages, R"({Save: {FCode: "Save", Messages: {new: 1}, FID: 0, FStatus: 1}})", nullptr},
      {stored(0), ForeignRecord(save).Handle(), R"({Save: {FCode: "Save", FID: 5, FStatus: 2, Messages: none}})",
       nullptr},
      {stored(6), save, R"({Save: {FCode: "Save", FID: 5, FStatus: 2, Messages: none}})", nullptr},
      {known, withMessages, R"({Save: {FCode: "Save", Messages: {old: 1}, FID: 5, FStatus: 2}})",
       R"({x: {FCode: "Save", FID: 5, Messages: {old: 1}}, )"
       R"(Save: {FCode: "Save", Messages: {new: 1}, FID: 5, FStatus: 2}})"},
      {stored(0), renamed, R"({Keep: {FCode: "Keep", FCode_Old: "Save", FID: 5, FStatus: 2, Messages: none}})",
       R"({Save: {FCode: "Save", FID: 5, FStatus: 0}, )"
       R"(Keep: {FCode: "Keep", FCode_Old: "Save", FID: 0, FStatus: 1, Messages: none}})"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    const auto before = Show(c.action);
    Hold(c.collection ? c.collection.Clone() : Dictionary());
    EXPECT_TRUE(actions.AddNew(c.action));
    EXPECT_EQ(Held(), c.afterAddNew);
    Hold(c.collection);
    EXPECT_TRUE(actions.Update(c.action));
    EXPECT_EQ(Held(), c.afterUpdate ? c.afterUpdate : c.afterAddNew);
    EXPECT_EQ(Show(c.action), before) << "the caller's package";
  }
}

TEST_F(BillActionEditingTest, FailedEditLosesNothing) {
  const auto lawful = Record({{L"Save", Record({{L"FCode", L"Save"}, {L"FID", 5}})}});
  const auto before = Show(lawful);
  Hold(lawful);
  ForeignRecord uncopied(Record({{L"FCode", L"Save"}}));
  uncopied.On(L"Clone", Failing(L"不能复制"));
  EXPECT_FALSE(actions.AddNew(uncopied.Handle()));
  EXPECT_FALSE(actions.Update(uncopied.Handle()));
  EXPECT_EQ(boxes.Take(), (Boxes{Report(L" : AddNew ", L"不能复制"), Report(L" : Update ", L"不能复制")}));
  EXPECT_EQ(Held(), before);
  const auto misnamed = Record({{L"FCode", L"A_B"}, {L"FCode_Old", L"Save"}});
  EXPECT_FALSE(actions.AddNew(misnamed));
  EXPECT_FALSE(actions.Update(misnamed));
  EXPECT_EQ(boxes.Take(), Boxes(2, Warning(L"操作代码只能由字符和数字组成！")));
  EXPECT_EQ(Held(), before);
  actions.ClassTypeID(0);
  EXPECT_FALSE(actions.AddNew(lawful));
  EXPECT_EQ(boxes.Take(), Boxes{Report(L" : AddNew ", L"请先设置本组件关联的业务对象!")});
}

TEST_F(BillActionEditingTest, RemoveAsksBeforeTheLastLiveAction) {
  const UINT style = MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2;
  const auto action = [](const wchar_t* code, std::int32_t status) {
    return Record({{L"FCode", code}, {L"FStatus", status}});
  };
  const struct {
    std::int32_t first, second;
    const wchar_t* code;
    int answer;  // 0 where nothing is asked
    bool removed;
    std::int32_t status;
  } cases[] = {
      {2, 2, L"Save", 0, true, 6},     {5, 0, L"Save", 0, true, 5},  {0, 4, L"Save", IDNO, false, 0},
      {0, 6, L"Save", IDYES, true, 4}, {0, 0, L"save", 0, false, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    const auto save = action(L"Save", c.first);
    Hold(Record({{L"Save", save}, {L"SAVE", action(L"SAVE", 0)}, {L"Check", action(L"Check", c.second)}}));
    if (c.answer) boxes.AnswerWith(c.answer);
    EXPECT_EQ(actions.Remove(c.code), c.removed);
    EXPECT_EQ(boxes.Take(), c.answer ? (Boxes{{kQuestion, L"Morla提示", style}}) : Boxes{});
    EXPECT_EQ(Show(*save.Get(L"FStatus"_key)), std::to_string(c.status));
    EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.BillActions.Remove 从操作集合中移去指定的操作 1");
  }
}

// As a host does whose window goes on while its user is asked.
TEST_F(BillActionEditingTest, ActionMayVanishWhileItIsRemoved) {
  const auto held = Record({{L"Save", Record({{L"FCode", L"Save"}})}});
  ForeignRecord check(Record({{L"FCode", L"Check"}}));
  check.On(L"GetValue", [&](Arguments&) {
    held.Remove(L"Save"_key);
    return Value(0);
  });
  held.Set(L"Check"_key, check.Handle());
  Hold(held);
  EXPECT_FALSE(actions.Remove(L"Save"));
}

TEST_F(BillActionEditingTest, RemoveAllAlwaysAsks) {
  const Box question = {kQuestion, L"Morla提示", MB_YESNO | MB_ICONINFORMATION | MB_DEFBUTTON2};
  Hold(Record({{L"a", Record({})}, {L"b", Record({{L"FStatus", 4}})}, {L"c", Record({{L"FStatus", 2}})}, {L"d", 1}}));
  boxes.AnswerWith(IDNO);
  actions.RemoveAll();
  EXPECT_EQ(Held(), "{a: {}, b: {FStatus: 4}, c: {FStatus: 2}, d: 1}");
  boxes.AnswerWith(IDYES);
  actions.GetBillActions().Remove(L"d"_key);
  actions.RemoveAll();
  EXPECT_EQ(Held(), "{a: {FStatus: 5}, b: {FStatus: 4}, c: {FStatus: 6}}");
  EXPECT_EQ(boxes.Take(), (Boxes{question, question}));
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.BillActions.RemoveAll 清空所有操作 1");
}

}  // namespace
}  // namespace tavio::test
