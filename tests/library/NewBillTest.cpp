#include "actions/BillActions.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

Box Report(const Text& operation, const Text& description) {
  return Warning(L"TavioClassBillAction.BillActions" + operation + L"\r\n" + description);
}

class NewBillTest : public LibraryTest {
 protected:
  NewBillTest() {
    actions.ClassType(Record({{L"FID", 7}, {L"FBillTypeID", Short(3)}}));
    actions.SetBillActions(Record({{L"Old", Record({{L"FClassTypeID", 7}})}}));
    catalogue.On(L"SetList", [](Arguments&) { return Value(true); });
  }

  FakeComponent catalogue{L"TavioClassBillAction.PredefineActions"};
  BillActions actions;
};

TEST_F(NewBillTest, DefaultsBecomeNewActions) {
  const auto save = Record({{L"FBillType", 4}, {L"FCode", L"Save"}, {L"FID", 12}, {L"Messages", Record({{L"1", 1}})}});
  const auto replaced = List({save});
  int calls = 0;
  catalogue.On(L"SetList", [&](Arguments& a) {
    EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_DISPATCH);
    EXPECT_EQ(a.At(0).ToObject().Get(), ++calls == 1 ? nullptr : replaced.Object().Get()) << "what the first call left";
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
  EXPECT_EQ(catalogue.Living(), 0);
  const Text label = L"TavioClassBillAction.BillActions.NewBill 加载该业务对象所属类别的默认操作";
  EXPECT_EQ(log->entries[0], "begin " + Utf8(label));
  EXPECT_EQ(log->entries[1], "end " + Utf8(label) + " 1");
}

// What `Save` does before it writes.
TEST_F(NewBillTest, LiveActionsWithoutAMaskGetTheFirstFreeOne) {
  FakeObject records;
  FakeComponent classInfo(L"TavioMClass.ClassInfo"), update(L"TavioMClass.ClassDefineUpdate");
  std::vector<std::string> queries;
  std::string written;
  catalogue.On(L"Item", [](Arguments& a) {
    const auto known = Record({{L"FRightMask", 2}, {L"FRightUseMask", 3}});
    return a.At(0).EqualsText(L"Save") ? known.AsValue() : Value();
  });
  catalogue.On(L"LookupRightMask", [](Arguments& a) { return Value(a.At(0).ToInt32() == 2); });
  classInfo.On(L"GetBillActions", [this](Arguments&) { return actions.GetBillActions().AsValue(); });
  classInfo.On(L"GetData", [&](Arguments& a) {
    queries.push_back(Utf8(a.At(1).ToText()));
    records.On(L"EOF", [free = queries.back().find("(1 &") == std::string::npos](Arguments&) { return Value(free); });
    return Value(records.New());
  });
  update.On(L"SaveBillActions", [&](Arguments& a) {
    written = Show(a.At(2));
    return Value();
  });
  actions.SetBillActions(Record({
      {L"Save", Record({{L"FClassTypeID", 7}, {L"FCode", L"Save"}, {L"FIsPredefine", true}, {L"FRightMask", 64}})},
      {L"a", Record({{L"FObjectID", L"12"}})},
      {L"gone", Record({{L"FStatus", 5}})},
      {L"kept", Record({{L"FRightMask", 32}})},
      {L"b", Record({{L"FCode", L"b"}, {L"FIsPredefine", true}, {L"FRightMask", 0}})},
  }));
  EXPECT_TRUE(actions.Save());
  EXPECT_EQ(written,
            R"({Save: {FClassTypeID: 7, FCode: "Save", FIsPredefine: true, FRightMask: 2, FRightUseMask: 3}, )"
            R"(a: {FObjectID: "12", FRightMask: 4, FRightControl: true, FRightUseMask: 4, FRightGroupMask: 4}, )"
            R"(gone: {FStatus: 5}, kept: {FRightMask: 32}, )"
            R"(b: {FCode: "b", FIsPredefine: true, FRightMask: 8, FRightControl: true, FRightUseMask: 8, )"
            R"(FRightGroupMask: 8}})");
  const std::string sql = "select 1 from t_ObjectAccessType where fobjectid=";
  EXPECT_EQ(queries, (std::vector{sql + "12 and (1 & faccessuse <> 0)", sql + "12 and (4 & faccessuse <> 0)",
                                  sql + "0 and (1 & faccessuse <> 0)", sql + "0 and (8 & faccessuse <> 0)"}));
  actions.SetBillActions(Record({{L"a", Record({{L"FClassTypeID", 7}, {L"FObjectID", L"1 or 1=1"}})}}));
  EXPECT_TRUE(actions.Save());
  EXPECT_EQ(boxes.Take(), Boxes{Report(L" : AssignRightMask", L"类型不匹配")});
  EXPECT_EQ(queries.size(), 4u) << "nothing unchecked goes into the text";
}

}  // namespace
}  // namespace tavio::test
