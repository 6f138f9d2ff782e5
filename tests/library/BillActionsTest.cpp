#include "actions/BillActions.h"
#include "tests/support/Foreign.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

class BillActionsTest : public LibraryTest {
 protected:
  BillActionsTest() {
    classInfo.On(L"GetBillActions", [this](Arguments&) { return loaded.Copy(); });
    update.On(L"SaveBillActions", [] {});
    catalogue.On(L"SetList", [] { return true; });
    catalogue.On(L"GetList", [] { return List({}); });
    actions.ClassType(Record({{L"FID", 7}, {L"FBillTypeID", Short(3)}}));
    actions.SetBillActions(Record({{L"Save", Record({{L"FCode", L"Save"}, {L"FClassTypeID", 7}, {L"FStatus", 4}})}}));
  }

  Value loaded = Record({{L"Check", Record({{L"FCode", L"Check"}})}}).AsValue();
  FakeComponent classInfo{L"TavioMClass.ClassInfo"};
  FakeComponent update{L"TavioMClass.ClassDefineUpdate"};
  FakeComponent catalogue{L"TavioClassBillAction.PredefineActions"};
  BillActions actions;
};

TEST_F(BillActionsTest, FailuresAreReportedUnderEachOperationsLabel) {
  const wchar_t kUnbound[] = L"«请先设置本组件关联的业务对象!»", kNoCode[] = L"«数据包缺少字段» FCode";
  const wchar_t kTooMany[] = L"«溢出»", kNoPackage[] = L"«类型不匹配»";
  const auto save = Record({{L"FCode", L"Save"}}), number = Record({{L"x", 5}});
  const auto unbound = Record({{L"a", Record({{L"FClassTypeID", 0}})}});
  const auto nameless = Record({{L"a", Record({{L"FEnvironment", 1}, {L"FClassTypeID", 7}})}});
  const auto tooMany = Dictionary::New();
  const auto tooManyDefaults = Vector::New();
  for (std::int32_t i = 1; i <= 32768; ++i) {
    tooMany.Set(Key(i), Record({{L"FCode", L"a"}}));
    tooManyDefaults.Add(Value(i));
  }
  const auto talkative = Record({{L"a", Record({{L"FCode", L"a"}, {L"FClassTypeID", 7}, {L"Messages", tooMany}})}});
  catalogue.On(L"GetDefaultActions", [&] { return tooManyDefaults; });
  const std::tuple<Dictionary, std::function<bool()>, Text, Text> cases[] = {
      {unbound, [&] { return actions.Initialize(), !actions.GetBillActions(); }, L"Initialize", kUnbound},
      {unbound, [&] { return actions.NewBill(), false; }, L"NewBill", kUnbound},
      {unbound, [&] { return actions.AddNew(save); }, L"AddNew ", kUnbound},
      {unbound, [&] { return actions.Update(save); }, L"Update ", kUnbound},
      {nameless, [&] { return !!actions.Item(L"a"); }, L"Item ", kNoCode},
      {nameless, [&] { return !!actions.GetEnvironmentItems(1); }, L"GetEnvironmentItems ", kNoCode},
      {tooMany, [&] { return actions.LookUp(L"a"); }, L"Lookup ", kTooMany},
      {talkative, [&] { return !!actions.GetMessage(L"a", 1); }, L"Item ", kTooMany},
      {talkative, [&] { return actions.NewBill(), false; }, L"NewBill", kTooMany},
      {{}, [&] { return actions.AddAppendVariables(number); }, L"AddAppendVariables", kNoPackage},
  };
  for (const auto& [held, call, label, description] : cases) {
    SCOPED_TRACE(Utf8(label + description));
    actions.SetBillActions(held);
    EXPECT_FALSE(call());
    EXPECT_EQ(boxes.Take(), Boxes{Report(L"BillActions : " + label, description)});
  }
}

TEST_F(BillActionsTest, WhatIsEmptyBindsToNothingElse) {
  for (const auto& collection : {Record({}), Dictionary()}) actions.SetBillActions(collection);
  for (const auto& type : {Record({}), Record({{L"FID", Value::Null()}}), Dictionary()}) actions.ClassType(type);
  EXPECT_EQ(actions.ClassTypeID(), 7);
}

TEST_F(BillActionsTest, SaveHandsEverythingOverAndLoadsAgain) {
  const auto given = actions.GetBillActions();
  update.On(L"SaveBillActions", [&](Arguments& a) {
    const VARTYPE types[] = {VT_BSTR, VT_BYREF | VT_I4, VT_BYREF | VT_DISPATCH, VT_BYREF | VT_DISPATCH};
    EXPECT_EQ(a.Count(), std::size(types));
    for (std::size_t i = 0; i < std::size(types); ++i) EXPECT_EQ(a.Raw(i).vt, types[i]) << "argument " << i;
    EXPECT_EQ(a.At(0).ToText(), props->props);
    EXPECT_EQ(Show(a.At(1)) + Show(a.At(3)), R"(7{FID: 7, FBillTypeID: 3s})");
    EXPECT_EQ(a.At(2).ToObject().Get(), given.Object().Get());
    a.Return(1, Value(8));
    a.Return(3, Record({{L"FBillTypeID", 9}}).AsValue());
  });
  classInfo.On(L"GetBillActions", [&](Arguments& a) {
    EXPECT_EQ(update.Living(), 0) << "released before the reload";
    EXPECT_EQ(a.At(0).ToText(), props->props);
    EXPECT_EQ(a.Raw(1).vt, VT_BYREF | VT_I4);
    EXPECT_EQ(Show(a.At(1)), "8");
    return loaded.Copy();
  });
  EXPECT_TRUE(actions.Save());
  EXPECT_EQ(actions.GetBillActions().Object().Get(), loaded.ToObject().Get());
  catalogue.On(L"GetDefaultActions", [](Arguments& a) { return Show(a.At(0)) == "9" ? List({}) : Vector(); });
  actions.NewBill();
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
}

// One field that the database left open must not hide the actions behind it.
TEST_F(BillActionsTest, DatabaseNullsMatchNothingAndHoldNoBits) {
  const auto null = Value::Null();
  const auto check = Record({{L"FCode", L"Check"}, {L"FEnvironment", 3}});
  actions.SetBillActions(Record({{L"", Record({{L"FCode", null}, {L"FEnvironment", 3}})},
                                 {L"Save", Record({{L"FCode", L"Save"}, {L"FEnvironment", null}})},
                                 {L"Check", check}}));
  EXPECT_FALSE(actions.LookUp(L""));
  EXPECT_TRUE(actions.LookUp(L"Check"));
  EXPECT_EQ(Show(actions.GetEnvironmentItems(-1)), Show(Record({{L"Check", check}})));
}

// A host's record is asked for its code, and takes the chance to change the collection that holds it.
TEST_F(BillActionsTest, CollectionMayChangeWhileItIsSearched) {
  const auto held = Record({{L"first", Record({{L"FCode", L"other"}})}});
  ForeignRecord save(Record({{L"FCode", L"Save"}, {L"FEnvironment", 3}}));
  save.On(L"Value", [&](Arguments& a) {
    for (const auto* key : {L"first", L"a key that is too long to share its place"}) held.Remove(Key(TextView(key)));
    actions.SetBillActions({});
    return a.At(0).EqualsText(L"FCode") ? Value(L"Save") : Value(3);
  });
  held.Set(L"a key that is too long to share its place"_key, save.Handle());
  actions.SetBillActions(held);
  EXPECT_EQ(Show(actions.Item(L"Save")), R"({FCode: "Save", FEnvironment: 3})");
  EXPECT_EQ(Show(held), "{}");
}

TEST_F(BillActionsTest, MessageIsThatOfTheGreatestSharedScenario) {
  const auto entry = [](const Item& mask, const wchar_t* message) {
    return Record({{L"FEnvironment", mask}, {L"Message", Record({{L"FTitle", message}})}});
  };
  const auto usual = Record({{L"1", entry(1, L"一")}, {L"8", entry(8, L"八")}, {L"2", entry(2, L"二")}});
  const auto moved = Record({{L"x", entry(2, L"二")}});
  const std::tuple<const char*, Dictionary, std::int32_t, const char*> cases[] = {
      {"of two", usual, 3, R"({FTitle: "二"})"},
      {"of scenario 0", Record({{L"0", entry(0, L"零")}}), 4, "none"},
      {"of all", usual, -1, R"({FTitle: "八"})"},
      {"under another key", moved, 2, "none"},
      {"without messages", Dictionary(), 1, "none"}};
  for (const auto& [row, messages, mask, message] : cases) {
    actions.SetBillActions(Record({{L"a", Record({{L"FCode", L"a"}, {L"Messages", messages}})}}));
    EXPECT_EQ(Show(actions.GetMessage(L"a", mask)), message) << row;
  }
}

TEST_F(BillActionsTest, DefaultsOfANewBillBecomeNewActions) {
  const auto save = Record({{L"FBillType", 4}, {L"FCode", L"Save"}, {L"FID", 12}, {L"Messages", Record({{L"1", 1}})}});
  const auto replaced = List({save});
  catalogue.On(L"SetList", [&](Arguments& a) {
    EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_DISPATCH);
    EXPECT_EQ(Show(a.At(0)), catalogue.Created() == 1 ? "none" : Show(replaced)) << "what the first call left";
    a.Return(0, replaced.AsValue());
    return Value(false);
  });
  catalogue.On(L"GetDefaultActions", [&](Arguments& a) {
    EXPECT_EQ(Show(a.At(0)), "3s");
    return List({save, Record({{L"FCode", 5}})}).AsValue();
  });
  for (int i = 0; i < 2; ++i) {
    actions.NewBill();
    EXPECT_EQ(Show(actions.GetBillActions()),
              R"({Save: {FCode: "Save", FID: 0, Messages: none, FClassTypeID: 7, FStatus: 1, FIsPredefine: true, )"
              R"(FIsFirst: false}, 5: {FCode: 5, FClassTypeID: 7, FID: 0, FStatus: 1, FIsPredefine: true, )"
              R"(FIsFirst: false, Messages: none}})");
  }
  EXPECT_EQ(PackageAt(actions.GetBillActions(), L"Save"_key).Object().Get(), save.Object().Get());
}

// What `Save` does before it writes.
class RightMaskTest : public BillActionsTest {
 protected:
  RightMaskTest() {
    catalogue.On(L"LookupRightMask", [](Arguments& a) { return Value(a.At(0).ToInt32() == 2); });
    classInfo.On(L"GetData", [this](Arguments& a) {
      queries.push_back(Utf8(a.At(1).ToText()));
      records.On(L"EOF", [free = queries.back().find(taken) == std::string::npos] { return free; });
      return Value(records.New());
    });
    update.On(L"SaveBillActions", [this](Arguments& a) { return written = Show(a.At(2)), Value(); });
  }

  FakeObject records;
  std::string taken = "(1 &";  // the queries that find a row
  Strings queries;
  std::string written;
};

TEST_F(RightMaskTest, LiveActionsWithoutAMaskGetTheFirstFreeOne) {
  catalogue.On(L"GetList", [] {
    return List({Record({{L"FCode", L"Save"}, {L"FRightMask", 2}, {L"FRightUseMask", 3}}),
                 Record({{L"FCode", L"Save"}, {L"FRightMask", 1024}}),
                 Record({{L"FCode", Value::Null()}, {L"FRightMask", 16}})});
  });
  actions.SetBillActions(Record({
      {L"Save", Record({{L"FClassTypeID", 7}, {L"FCode", L"Save"}, {L"FIsPredefine", true}, {L"FRightMask", 64}})},
      {L"a", Record({{L"FObjectID", L"12"}})},
      {L"gone", Record({{L"FStatus", 5}, {L"FRightMask", 8}})},
      {L"kept", Record({{L"FRightMask", 32}})},
      {L"b", Record({{L"FCode", L"b"}, {L"FIsPredefine", true}, {L"FRightMask", 0}})},
      {L"n", Record({{L"FCode", Value::Null()}, {L"FIsPredefine", true}})},
  }));
  EXPECT_TRUE(actions.Save());
  EXPECT_EQ(written,
            R"({Save: {FClassTypeID: 7, FCode: "Save", FIsPredefine: true, FRightMask: 2, FRightUseMask: 3}, )"
            R"(a: {FObjectID: "12", FRightMask: 4, FRightControl: true, FRightUseMask: 4, FRightGroupMask: 4}, )"
            R"(gone: {FStatus: 5, FRightMask: 8}, kept: {FRightMask: 32}, )"
            R"(b: {FCode: "b", FIsPredefine: true, FRightMask: 8, FRightControl: true, FRightUseMask: 8, )"
            R"(FRightGroupMask: 8}, n: {FCode: null, FIsPredefine: true, FRightMask: 64, FRightControl: true, )"
            R"(FRightUseMask: 64, FRightGroupMask: 64}})");
  const std::string sql = "select 1 from t_ObjectAccessType where fobjectid=";
  EXPECT_EQ(queries, (Strings{sql + "12 and (1 & faccessuse <> 0)", sql + "12 and (4 & faccessuse <> 0)",
                              sql + "0 and (1 & faccessuse <> 0)", sql + "0 and (8 & faccessuse <> 0)",
                              sql + "0 and (64 & faccessuse <> 0)"}));
}

// After a save that failed, the database knows nothing of the masks that were given for it.
TEST_F(RightMaskTest, MaskOfAnActionThatWasNeverStoredIsNotGivenAgain) {
  taken = "no such query";
  actions.SetBillActions(Record({{L"late", Record({{L"FClassTypeID", 7}, {L"FObjectID", 2}})},
                                 {L"unsaved", Record({{L"FRightMask", 5}, {L"FObjectID", 1}})}}));
  EXPECT_TRUE(actions.Save());
  EXPECT_NE(written.find("late: {FClassTypeID: 7, FObjectID: 2, FRightMask: 8,"), std::string::npos) << written;
  EXPECT_EQ(queries.size(), 1u);
}

TEST_F(RightMaskTest, SavingGoesOnWithoutAMask) {
  taken = "select";
  actions.SetBillActions(Record({{L"a", Record({{L"FClassTypeID", 7}})}}));
  EXPECT_TRUE(actions.Save());
  EXPECT_EQ(written, "{a: {FClassTypeID: 7, FRightMask: 0}}") << "none is free";
  queries.clear();
  actions.SetBillActions(Record({{L"a", Record({{L"FClassTypeID", 7}, {L"FObjectID", L"1 or 1=1"}})}}));
  EXPECT_TRUE(actions.Save());
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"BillActions : AssignRightMask", L"«类型不匹配»")});
  EXPECT_EQ(queries, Strings{}) << "nothing unchecked goes into the text";
}

}  // namespace
}  // namespace tavio::test
