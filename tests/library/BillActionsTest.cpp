#include "actions/BillActions.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using Entries = std::vector<std::string>;

const char kBeginSave[] = "begin TavioClassBillAction.BillActions.Save 操作集合保存";
const char kBeginInitialize[] = "begin TavioClassBillAction.BillActions.Initialize 业务对象操作初始化";

Box Report(const Text& operation, const Text& description) {
  return Warning(L"TavioClassBillAction.BillActions" + operation + L"\r\n" + description);
}

class BillActionsTest : public LibraryTest {
 protected:
  BillActionsTest() {
    classInfo->On(L"GetBillActions", [this](Arguments&) { return loaded.Copy(); });
    update.On(L"SaveBillActions", [](Arguments&) { return Value(); });
    catalogue.On(L"SetList", [](Arguments&) { return Value(true); });
    catalogue.On(L"Item", [](Arguments&) { return Value(); });
    actions.ClassTypeID(7);
    actions.ClassType(Record({{L"FName", L"单据"}}));
    actions.SetBillActions(Record({{L"Save", Record({{L"FCode", L"Save"}, {L"FClassTypeID", 7}, {L"FStatus", 4}})}}));
  }

  Value loaded = Record({{L"Check", Record({{L"FCode", L"Check"}})}}).AsValue();
  std::optional<FakeComponent> classInfo{std::in_place, L"TavioMClass.ClassInfo"};
  FakeComponent update{L"TavioMClass.ClassDefineUpdate"};
  FakeComponent catalogue{L"TavioClassBillAction.PredefineActions"};
  BillActions actions;
};

TEST_F(BillActionsTest, InitializeReportsItsFailure) {
  const struct {
    const wchar_t* description;
    std::function<void()> prepare;
    const char* left;
  } cases[] = {
      {L"请先设置本组件关联的业务对象!", [&] { actions.ClassTypeID(0); }, "{Save: {}}"},
      {L"断开", [&] { classInfo->On(L"GetBillActions", Failing(L"断开")); }, "none"},
      {L"不能创建组件 TavioMClass.ClassInfo", [&] { classInfo.reset(); }, "none"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    actions.SetBillActions(Record({{L"Save", Record({})}}));
    actions.ClassTypeID(7);
    c.prepare();
    actions.Initialize();
    EXPECT_EQ(boxes.Take(), Boxes{Report(L" : Initialize", c.description)});
    EXPECT_EQ(Show(actions.GetBillActions()), c.left);
    EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.BillActions.Initialize 业务对象操作初始化 0");
  }
}

TEST_F(BillActionsTest, SaveHandsEverythingOverAndLoadsAgain) {
  const auto given = actions.GetBillActions();
  const auto replaced = Record({{L"FName", L"新单据"}});
  update.On(L"SaveBillActions", [&](Arguments& a) {
    const VARTYPE types[] = {VT_BSTR, VT_BYREF | VT_I4, VT_BYREF | VT_DISPATCH, VT_BYREF | VT_DISPATCH};
    EXPECT_EQ(a.Count(), std::size(types));
    for (std::size_t i = 0; i < std::size(types); ++i) EXPECT_EQ(a.Raw(i).vt, types[i]) << i;
    EXPECT_EQ(a.At(0).ToText(), props->props);
    EXPECT_EQ(Show(a.At(1)) + Show(a.At(3)), R"(7{FName: "单据"})");
    EXPECT_EQ(a.At(2).ToObject().Get(), given.Object().Get());
    a.Return(1, Value(8));
    a.Return(3, replaced.AsValue());
    return Value();
  });
  classInfo->On(L"GetBillActions", [&](Arguments& a) {
    EXPECT_EQ(update.Living(), 0) << "released before the reload";
    EXPECT_EQ(a.At(0).ToText(), props->props);
    EXPECT_EQ(Show(a.At(1)), "8");
    return loaded.Copy();
  });
  EXPECT_TRUE(actions.Save());
  EXPECT_EQ(actions.GetBillActions().Object().Get(), loaded.ToObject().Get());
  EXPECT_EQ(log->entries, (Entries{kBeginSave, kBeginInitialize,
                                   "end TavioClassBillAction.BillActions.Initialize 业务对象操作初始化 1",
                                   "end TavioClassBillAction.BillActions.Save 操作集合保存 1"}));
}

TEST_F(BillActionsTest, SaveThatFailsKeepsThePackages) {
  FakeObject noContainer;
  const auto given = actions.GetBillActions();
  update.On(L"SaveBillActions", [&](Arguments& a) {
    a.Return(2, Record({}).AsValue());
    a.Return(3, Value(noContainer.New()));
    return Value();
  });
  EXPECT_FALSE(actions.Save());
  update.On(L"SaveBillActions", Failing(L"断开"));
  EXPECT_FALSE(actions.Save());
  EXPECT_EQ(boxes.Take(), (Boxes{Report(L" : Save", L"类型不匹配"), Report(L" : Save", L"断开")}));
  EXPECT_EQ(actions.GetBillActions().Object().Get(), given.Object().Get());
  EXPECT_EQ(classInfo->Created(), 0) << "not loaded again";
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.BillActions.Save 操作集合保存 0");
}

TEST_F(BillActionsTest, SaveReportsAFailedReloadOnceMore) {
  classInfo->On(L"GetBillActions", Failing(L"断开"));
  EXPECT_FALSE(actions.Save());
  EXPECT_EQ(boxes.Take(), (Boxes{Report(L" : Initialize", L"断开"), Report(L" : Save", L"断开")}));
}

TEST_F(BillActionsTest, QueriesReportUnderTheirOwnLabels) {
  const auto tooMany = Dictionary::New();
  for (std::int32_t i = 1; i <= 32768; ++i) tooMany.Set(Key(i), Record({{L"FCode", L"a"}}));
  const struct {
    Dictionary held;
    const wchar_t* description;
  } cases[] = {{Record({{L"a", Record({})}}), L"数据包缺少字段 FCode"}, {tooMany, L"溢出"}};
  for (const auto& c : cases) {
    actions.SetBillActions(c.held);
    EXPECT_FALSE(actions.Item(L"a"));
    EXPECT_FALSE(actions.LookUp(L"a"));
    EXPECT_EQ(boxes.Take(), (Boxes{Report(L" : Item ", c.description), Report(L" : Lookup ", c.description)}));
  }
}

TEST_F(BillActionsTest, QueriesFindByTheActionsOwnCode) {
  const auto save = Record({{L"FCode", L"Save"}, {L"FEnvironment", 3}, {L"FStatus", 4}});
  const auto check = Record({{L"FCode", L"Check"}, {L"FEnvironment", 4}});
  const auto again = Record({{L"FCode", L"Save"}, {L"FEnvironment", 8}});
  actions.SetBillActions(Record({{L"x", save}, {L"Check", check}, {L"Save", again}}));
  for (const auto& [code, found] :
       {std::pair{L"Save", &save}, {L"Check", &check}, {L"save", nullptr}, {L"Save ", nullptr}, {L"x", nullptr}}) {
    EXPECT_EQ(Show(actions.Item(code)), found ? Show(*found) : "none") << Utf8(code);
    EXPECT_EQ(actions.LookUp(code), found != nullptr) << Utf8(code);
  }
  EXPECT_NE(actions.Item(L"Save").Object().Get(), save.Object().Get());

  EXPECT_EQ(Show(actions.GetEnvironmentItems(6)), Show(Record({{L"Save", save}, {L"Check", check}})));
  const auto all = actions.GetEnvironmentItems(-1);
  EXPECT_EQ(Show(all), Show(Record({{L"Save", again}, {L"Check", check}})));
  EXPECT_NE(PackageAt(all, L"Check"_key).Object().Get(), check.Object().Get()) << "a copy";
  EXPECT_EQ(log->entries, Entries{});
}

TEST_F(BillActionsTest, MessageIsThatOfTheGreatestSharedScenario) {
  const auto entry = [](const Item& mask, const wchar_t* message) {
    return Record({{L"FEnvironment", mask}, {L"Message", Record({{L"FTitle", message}})}});
  };
  const auto usual = Record({{L"1", entry(1, L"一")}, {L"8", entry(8, L"八")}, {L"2", entry(2, L"二")}});
  const struct {
    Item messages;
    std::int32_t mask;
    const char* message;
    const wchar_t* description;
  } cases[] = {
      {usual, 3, R"({FTitle: "二"})", nullptr},
      {usual, -1, R"({FTitle: "八"})", nullptr},
      {usual, 4, "none", nullptr},
      {Record({{L"x", entry(2, L"二")}}), 2, "none", nullptr},  // not under its mask
      {Dictionary(), 1, "none", nullptr},
      {L"x", 1, "none", L"类型不匹配"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    actions.SetBillActions(Record({{L"a", Record({{L"FCode", L"a"}, {L"Messages", c.messages}})}}));
    log->entries.clear();
    EXPECT_EQ(Show(actions.GetMessage(L"a", c.mask)), c.message);
    EXPECT_EQ(boxes.Take(), c.description ? Boxes{Report(L" : Item ", c.description)} : Boxes{});
    EXPECT_EQ(log->entries, Entries(2, "begin TavioClassBillAction.BillActions.GetMessage"));
  }
}

}  // namespace
}  // namespace tavio::test
