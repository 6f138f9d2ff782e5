#include "catalogues/BillEnvironments.h"
#include "catalogues/PredefineActions.h"
#include "foundation/values/Error.h"
#include "tests/support/Platform.h"

namespace tavio::test {
namespace {

Dictionary RecordAt(const Vector& list, std::int32_t position) { return list.Record(position); }
Dictionary RecordAt(const Dictionary& set, std::int32_t position) { return Dictionary(set.At(position).Stored()); }

// One field of every record.
std::string Column(const auto& records, const wchar_t* field = L"FID") {
  if (!records) return "none";
  std::string column;
  for (std::int32_t i = 1; i <= records.Count(); ++i) {
    column += Show(*RecordAt(records, i).Get(Key(TextView(field)))) + " ";
  }
  return column;
}

class CataloguesTest : public LibraryTest {
 protected:
  CataloguesTest() {
    Answer(L"GetBillEnvironments", [this] { return source.AsValue(); });
    Answer(L"GetClassMenu", [this] { return menu.AsValue(); });
    Answer(L"getpredefineactions", [this] { return catalogue.AsValue(); });
  }

  void Answer(const wchar_t* member, std::function<Value()> package) {
    classInfo.On(member, [this, package](Arguments& a) {
      EXPECT_EQ(Show(a.At(0)), '"' + Utf8(props->props) + '"');
      return package();
    });
  }

  FakeComponent classInfo{L"TavioMClass.ClassInfo"};
  Vector source = List({Scenario(1, 101), Scenario(2, 102, 3), Scenario(3, 103, 2), Scenario(7, 107, 0x40000000)});
  Dictionary menu = Record({{L"FName", L"菜单"}});
  BillEnvironments environments;
  Vector catalogue = List({Record({{L"FCode", L"Save"}, {L"FBillType", 1}, {L"FRightMask", 4}}),
                           Record({{L"FCode", L"Check"}, {L"FBillType", 0x40000003}, {L"FRightMask", Short(16)}}),
                           Record({{L"FCode", L"Save"}, {L"FBillType", Short(2)}}), Record({{L"FName", L"无编码"}})});
  PredefineActions actions;
};

TEST_F(CataloguesTest, EqualMasksCollapseToTheLastInTheFirstPlace) {
  source = List({Scenario(1, 10), Scenario(4, 40), Scenario(1, 11)});
  EXPECT_EQ(Show(environments.GetList()),
            "{1: {FMask: 1, FID: 11, FBillType: 1, Parent: 0, Level: 0}, "
            "4: {FMask: 4, FID: 40, FBillType: 1, Parent: 0, Level: 0}}");
  EXPECT_EQ(Show(source.Record(1)), "{FMask: 1, FID: 10, FBillType: 1}");
}

TEST_F(CataloguesTest, ScenariosAreSortedAsATreeOfSharedRecords) {
  EXPECT_EQ(Column(environments.GetSortList()), "107 103 102 101 ");
  EXPECT_EQ(Column(environments.GetSortList(), L"Parent"), "0 7 3 3 ");
  EXPECT_EQ(Column(environments.GetSortList(), L"Level"), "0 1 2 2 ");
  EXPECT_EQ(environments.GetList().Object().Get(), environments.GetList().Object().Get());
  const auto whole = environments.GetSortList(), found = environments.GetSortList(0, 107);
  for (const auto& record : {whole.Record(1), found.Record(1), PackageAt(environments.GetList(), L"7"_key),
                             environments.GetItem(7, 101), environments.GetItem(0, 107)}) {
    EXPECT_EQ(record.Object().Get(), source.Record(4).Object().Get());
  }
  EXPECT_FALSE(environments.GetItem(5, 107)) << "a mask that is given is exact";
  EXPECT_EQ(classInfo.Calls(L"GetBillEnvironments"), 1);
  EXPECT_EQ(environments.GetClassMenu().Object().Get(), menu.Object().Get());
}

TEST_F(CataloguesTest, ScenariosAreFilteredByIdOrMask) {
  source.Add(Record({{L"FMask", 64}}));
  source.Add(Scenario(-8, 108));
  const struct {
    const char* row;
    std::int32_t mask, id;
    const char *set, *sorted, *message;
  } cases[] = {
      // The record without FID has id 0 and so is in every list that is asked for by mask only.
      {"a mask", 2, 0, "102 103 107 empty ", "102 empty ", "107 103 102 empty "},
      {"a mask of two", 3, -1, "101 102 103 107 ", "103 102 101 ", "107 103 102 101 "},
      {"an ID", 0, 103, "103 ", "103 ", "103 "},
      {"a mask and an ID", 1, 107, "101 103 107 ", "107 101 ", "107 103 101 "},
      {"a negative mask", -8, 999, "empty 108 ", "108 ", "empty 108 "},
  };
  for (const auto& [row, mask, id, set, sorted, message] : cases) {
    SCOPED_TRACE(row);
    EXPECT_EQ(Column(environments.GetList(mask, id)), set);
    EXPECT_EQ(Column(environments.GetSortList(mask, id)), sorted);
    EXPECT_EQ(Column(environments.GetSortListMsg(mask, id)), message);
  }
}

// One field that the database left open must not hide the records behind it.
TEST_F(CataloguesTest, DatabaseNullsMatchNothingAndHoldNoBits) {
  const auto null = Value::Null();
  source = List({Record({{L"FMask", null}, {L"FID", null}, {L"FBillType", null}}), Scenario(8, 108)});
  EXPECT_EQ(Column(environments.GetSortList()), "null 108 ") << "by mask 0";
  EXPECT_EQ(Column(environments.GetList(0, 108)), "108 ");
  EXPECT_EQ(Column(environments.GetSortList(8, 0)), "108 ");
  EXPECT_EQ(Column(environments.GetBillTypeList(1)), "108 ");
  EXPECT_EQ(Show(*environments.GetItem(0, 108).Get(L"FID"_key)), "108");
  catalogue =
      List({Record({{L"FCode", null}, {L"FBillType", null}}), Record({{L"FCode", L"Save"}, {L"FBillType", 1}})});
  EXPECT_FALSE(actions.LookUp(L""));
  EXPECT_TRUE(actions.LookUp(L"Save"));
  EXPECT_EQ(actions.GetDefaultActions(1).Count(), 1);
}

TEST_F(CataloguesTest, ScenariosAreCountedIn16Bits) {
  for (std::int32_t i = 1; i <= 32768; ++i) source.Add(Value(i));
  EXPECT_FALSE(environments.GetSortList());
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"BillEnvironments : SortList ", L"«溢出»")});
  EXPECT_TRUE((source = List({}), environments.GetSortList())) << "asked for again";
  const auto set = environments.GetList();
  for (std::int32_t i = 1; i <= 32768; ++i) set.Set(Key(i), Record({}));
  EXPECT_FALSE(environments.GetItem(0, 108));
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"BillEnvironments : GetItem ", L"«溢出»")});
}

TEST_F(CataloguesTest, BillTypesAreCountedFromOneTo31) {
  const std::tuple<std::int32_t, const char*, const char*> cases[] = {{1, "101 102 ", R"("Save" "Check" )"},
                                                                      {2, "102 103 ", R"("Check" "Save" )"},
                                                                      {31, "107 ", R"("Check" )"},
                                                                      {0, "", ""},
                                                                      {32, "none", "none"}};
  for (const auto& [billType, scenarios, defaults] : cases) {
    EXPECT_EQ(Column(environments.GetBillTypeList(billType)), scenarios) << billType;
    EXPECT_EQ(Column(actions.GetDefaultActions(billType), L"FCode"), defaults) << billType;
  }
  EXPECT_EQ(boxes.Take(), (Boxes{Report(L"BillEnvironments : GetBillTypeList ", L"«溢出»"),
                                 Report(L"PredefineActions : GetDefaultActions", L"«溢出»")}));
  const auto messages = Record({});
  catalogue.Record(1).Set(L"Messages"_key, messages);
  const auto copy = actions.GetDefaultActions(1).Record(1);
  EXPECT_NE(copy.Object().Get(), catalogue.Record(1).Object().Get());
  EXPECT_EQ(PackageAt(copy, L"Messages"_key).Object().Get(), messages.Object().Get());
}

TEST_F(CataloguesTest, ActionsAreFoundByExactlyTheirCode) {
  EXPECT_EQ(actions.Item(L"Save").Object().Get(), catalogue.Record(1).Object().Get()) << "the first";
  EXPECT_TRUE(actions.LookUp(L"Check"));
  for (const auto* other : {L"save", L"Save "}) EXPECT_FALSE(actions.LookUp(other)) << Utf8(other);
  EXPECT_EQ(actions.GetList().Object().Get(), catalogue.Object().Get());
  EXPECT_EQ(classInfo.Calls(L"getpredefineactions"), 1);
  const auto given = List({Value(L"no record")});
  EXPECT_TRUE(actions.SetList(given.AsValue()));
  EXPECT_EQ(actions.GetList().Object().Get(), given.Object().Get());
  EXPECT_FALSE(actions.Item(L"Save"));
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"PredefineActions : Item", L"«类型不匹配»")});
}

TEST_F(CataloguesTest, RightMasksAreLookedUpSilently) {
  catalogue.Add(Record({{L"FRightMask", L"none"}}));
  catalogue.Add(Record({{L"FRightMask", 32}}));
  // 0 is the mask of a record that has none; 32 stands behind the record that ends the walk.
  for (const auto& [mask, used] : {std::pair{4, true}, {16, true}, {0, true}, {20, false}, {32, false}}) {
    EXPECT_EQ(actions.LookupRightMask(mask), used) << mask;
  }
}

}  // namespace
}  // namespace tavio::test
