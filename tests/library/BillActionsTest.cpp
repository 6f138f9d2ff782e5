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

// `count` entries, all of them the same record.
Dictionary ManyEntries(std::int32_t count, const Dictionary& record) {
  auto many = Dictionary::New();
  for (std::int32_t i = 1; i <= count; ++i) many.Set(Key(i), record);
  return many;
}

class BillActionsTest : public LibraryTest {
 protected:
  BillActionsTest() {
    classInfo->On(L"GetBillActions", [this](Arguments&) { return loaded.Copy(); });
    update->On(L"SaveBillActions", [](Arguments&) { return Value(); });
    catalogue.On(L"SetList", [](Arguments&) { return Value(true); });
    catalogue.On(L"Item", [](Arguments&) { return Value(); });
    actions.ClassTypeID(7);
    actions.ClassType(Record({{L"FName", L"单据"}}));
    actions.SetBillActions(Record({{L"Save", Record({{L"FCode", L"Save"}, {L"FClassTypeID", 7}, {L"FStatus", 4}})}}));
  }

  Value loaded = Record({{L"Check", Record({{L"FCode", L"Check"}})}}).AsValue();
  std::optional<FakeComponent> classInfo{std::in_place, L"TavioMClass.ClassInfo"};
  std::optional<FakeComponent> update{std::in_place, L"TavioMClass.ClassDefineUpdate"};
  FakeComponent catalogue{L"TavioClassBillAction.PredefineActions"};
  BillActions actions;
};

TEST_F(BillActionsTest, TemplateBindsByItsId) {
  const std::pair<Dictionary, std::int32_t> cases[] = {
      {Record({{L"FID", Short(5)}}), 5},
      {Record({{L"FID", L"12"}}), 12},
      {Record({{L"FBillTypeID", 3}}), 12},
      {Dictionary(), 12},
      {ForeignRecord(Record({{L"FID", 9}})).Handle(), 9},
  };
  for (const auto& [classType, classTypeId] : cases) {
    actions.ClassType(classType);
    EXPECT_EQ(actions.ClassTypeID(), classTypeId);
  }
  EXPECT_THROW(actions.ClassType(Record({{L"FID", L"单据"}})), Error);
  EXPECT_EQ(actions.ClassTypeID(), 9);
}

TEST_F(BillActionsTest, InitializeHoldsWhatTheMiddleTierAnswers) {
  classInfo->On(L"GetBillActions", [&](Arguments& a) {
    EXPECT_EQ(a.Count(), 2u);
    EXPECT_EQ(a.Raw(0).vt, VT_BSTR);
    EXPECT_EQ(a.At(0).ToText(), props->props);
    EXPECT_EQ(a.Raw(1).vt, VT_BYREF | VT_I4);
    EXPECT_EQ(Show(a.At(1)), "7");
    EXPECT_FALSE(actions.GetBillActions()) << "the old ones are let go before the call";
    a.Return(1, Value(99));
    return loaded.Copy();
  });
  actions.Initialize();
  EXPECT_EQ(actions.GetBillActions().Object().Get(), loaded.ToObject().Get());
  EXPECT_EQ(actions.ClassTypeID(), 7);
  EXPECT_EQ(classInfo->Living(), 0);
  EXPECT_EQ(log->entries,
            (Entries{kBeginInitialize, "end TavioClassBillAction.BillActions.Initialize 业务对象操作初始化 1"}));
}

TEST_F(BillActionsTest, InitializeReportsItsFailure) {
  const struct {
    const wchar_t* description;
    std::function<void()> prepare;
    const char* left;
  } cases[] = {
      {L"请先设置本组件关联的业务对象!", [&] { actions.ClassTypeID(0); }, "{Save: {}}"},
      {L"断开", [&] { classInfo->On(L"GetBillActions", Failing(L"断开")); }, "none"},
      {L"类型不匹配", [&] { classInfo->On(L"GetBillActions", [](Arguments&) { return List({}).AsValue(); }); }, "none"},
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
  update->On(L"SaveBillActions", [&](Arguments& a) {
    const VARTYPE types[] = {VT_BSTR, VT_BYREF | VT_I4, VT_BYREF | VT_DISPATCH, VT_BYREF | VT_DISPATCH};
    EXPECT_EQ(a.Count(), std::size(types));
    for (std::size_t i = 0; i < std::size(types); ++i) EXPECT_EQ(a.Raw(i).vt, types[i]) << i;
    EXPECT_EQ(Show(a.At(1)) + Show(a.At(3)), R"(7{FName: "单据"})");
    EXPECT_EQ(a.At(2).ToObject().Get(), given.Object().Get());
    a.Return(1, Value(8));
    a.Return(3, replaced.AsValue());
    return Value();
  });
  classInfo->On(L"GetBillActions", [&](Arguments& a) {
    EXPECT_EQ(update->Living(), 0) << "released before the reload";
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
  const auto nonsense = [&](Arguments& a) {
    a.Return(2, Record({}).AsValue());
    a.Return(3, Value(noContainer.New()));
    return Value();
  };
  const struct {
    const wchar_t* description;
    std::function<void()> prepare;
  } cases[] = {
      {L"断开", [&] { update->On(L"SaveBillActions", Failing(L"断开")); }},
      {L"类型不匹配", [&] { update->On(L"SaveBillActions", nonsense); }},
      {L"不能创建组件 TavioMClass.ClassDefineUpdate", [&] { update.reset(); }},
  };
  const auto given = actions.GetBillActions();
  for (const auto& c : cases) {
    c.prepare();
    EXPECT_FALSE(actions.Save());
    EXPECT_EQ(boxes.Take(), Boxes{Report(L" : Save", c.description)});
    EXPECT_EQ(actions.GetBillActions().Object().Get(), given.Object().Get());
    EXPECT_EQ(classInfo->Created(), 0) << "not loaded again";
    EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.BillActions.Save 操作集合保存 0");
  }
}

TEST_F(BillActionsTest, SaveReportsItsReloadOnceMore) {
  classInfo->On(L"GetBillActions", Failing(L"断开"));
  EXPECT_FALSE(actions.Save());
  EXPECT_EQ(boxes.Take(), (Boxes{Report(L" : Initialize", L"断开"), Report(L" : Save", L"断开")}));
  EXPECT_FALSE(actions.GetBillActions());

  const Text unbound = L"请先设置本组件关联的业务对象!";
  actions.ClassTypeID(0);
  EXPECT_FALSE(actions.Save());
  EXPECT_EQ(boxes.Take(), (Boxes{Report(L" : AssignRightMask", unbound), Report(L" : Initialize", unbound),
                                 Report(L" : Save", unbound)}));
  EXPECT_EQ(update->Calls(L"SaveBillActions"), 2) << "a failed assignment of masks does not stop it";
}

TEST_F(BillActionsTest, CollectionBringsItsClassTypeId) {
  const auto first = [](const Item& classTypeId) { return Record({{L"FClassTypeID", classTypeId}}); };
  const struct {
    Dictionary given;
    std::int32_t classTypeId;
    const wchar_t* description;
  } cases[] = {
      {Dictionary(), 7, nullptr},
      {Record({{L"a", first(77)}, {L"b", first(5)}}), 77, nullptr},
      {Record({{L"a", Record({})}}), 0, nullptr},
      {Record({{L"a", first(L"单据")}}), 7, L"类型不匹配"},
      {Record({{L"a", 1}}), 7, L"类型不匹配"},
      {Record({{L"a", Dictionary()}}), 7, L"对象未设置"},
      {ForeignRecord(Record({{L"a", first(77)}})).Handle(), 77, nullptr},
      {Record({{L"a", ForeignRecord(Record({})).Handle()}}), 7, L"无此字段"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    actions.ClassTypeID(7);
    actions.SetBillActions(c.given);
    EXPECT_EQ(actions.ClassTypeID(), c.classTypeId);
    EXPECT_EQ(actions.GetBillActions().Object().Get(), c.given.Object().Get());
    EXPECT_EQ(boxes.Take(), c.description ? Boxes{Report(L" : SetBillActions", c.description)} : Boxes{});
  }
  EXPECT_EQ(log->entries, Entries{});
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

  for (const auto& [mask, found] : {std::pair{6, Record({{L"Save", save}, {L"Check", check}})},
                                    {16, Record({})},
                                    {-1, Record({{L"Save", again}, {L"Check", check}})}}) {
    const auto items = actions.GetEnvironmentItems(mask);
    EXPECT_EQ(Show(items), Show(found)) << mask;
    EXPECT_NE(PackageAt(items, L"Check"_key).Object().Get(), check.Object().Get()) << "a copy";
  }
  EXPECT_EQ(log->entries, Entries{});
  const BillActions empty;
  EXPECT_EQ(Show(List({empty.Item(L"a"), empty.GetEnvironmentItems(1), empty.GetMessage(L"a", 1), empty.LookUp(L"a")})),
            "[none, none, none, false]");
}

TEST_F(BillActionsTest, QueriesReportWhatTheyCannotRead) {
  const auto lawful = Record({{L"FCode", L"Save"}, {L"FEnvironment", 1}});
  ForeignRecord failing(Record({{L"FCode", L"Save"}}));
  failing.On(L"Value", Failing(L"断开"));
  const struct {
    Dictionary collection;
    const wchar_t* description;
    bool listed;
  } cases[] = {
      {Record({{L"a", Record({{L"FEnvironment", 1}})}, {L"Save", lawful}}), L"数据包缺少字段 FCode", false},
      {Record({{L"a", 5}}), L"类型不匹配", false},
      {Record({{L"a", failing.Handle()}}), L"断开", false},
      {ManyEntries(32768, lawful), L"溢出", true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    actions.SetBillActions(c.collection);
    boxes.Take();
    EXPECT_FALSE(actions.Item(L"Save"));
    EXPECT_FALSE(actions.LookUp(L"Save"));
    EXPECT_FALSE(actions.GetMessage(L"Save", 1));
    EXPECT_EQ(boxes.Take(), (Boxes{Report(L" : Item ", c.description), Report(L" : Lookup ", c.description),
                                   Report(L" : Item ", c.description)}));
    EXPECT_EQ(static_cast<bool>(actions.GetEnvironmentItems(1)), c.listed);
    EXPECT_EQ(boxes.Take(), c.listed ? Boxes{} : Boxes{Report(L" : GetEnvironmentItems ", c.description)});
  }
  actions.SetBillActions(ManyEntries(32767, lawful));
  EXPECT_TRUE(actions.LookUp(L"Save"));
  EXPECT_FALSE(actions.LookUp(L"Check"));
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
      {Record({{L"2", Record({{L"FEnvironment", 2}})}}), 2, "none", nullptr},
      {Record({{L"-1", entry(-1, L"负")}}), 1, "none", nullptr},
      {Dictionary(), 1, "none", nullptr},
      {Value(), 1, "none", nullptr},
      {L"x", 1, "none", L"类型不匹配"},
      {Record({{L"1", entry(L"x", L"")}}), 1, "none", L"类型不匹配"},
      {ManyEntries(32767, entry(1, L"一")), 1, R"({FTitle: "一"})", nullptr},
      {ManyEntries(32768, entry(1, L"一")), 1, "none", L"溢出"},
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
