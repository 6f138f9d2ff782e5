#include <functional>

#include "catalogues/BillEnvironments.h"
#include "foundation/Error.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

Box Report(const wchar_t* operation, const wchar_t* description) {
  return Warning(Text(L"TavioClassBillAction.BillEnvironments : ") + operation + L" \r\n" + description);
}

Dictionary Scenario(std::int32_t mask, std::int32_t id, std::int32_t billType = 1) {
  return Record({{L"FMask", mask}, {L"FID", id}, {L"FBillType", billType}});
}

Dictionary RecordAt(const Vector& list, std::int32_t position) { return list.Record(position); }
Dictionary RecordAt(const Dictionary& set, std::int32_t position) { return Dictionary(*set.At(position).value); }

std::string Ids(const auto& records) {
  std::string ids;
  for (std::int32_t i = 1; i <= records.Count(); ++i) ids += Show(*RecordAt(records, i).Get(L"FID"_key)) + " ";
  return ids;
}

class BillEnvironmentsTest : public LibraryTest {
 protected:
  BillEnvironmentsTest() {
    classInfo.On(L"GetBillEnvironments", [this](Arguments& a) { return Answer(a, source.AsValue()); });
    classInfo.On(L"GetClassMenu", [this](Arguments& a) { return Answer(a, menu.AsValue()); });
  }

  Value Answer(Arguments& a, Value package) const {
    EXPECT_EQ(Show(a.At(0)), '"' + Utf8(props->props) + '"');
    if (!answers) throw Error(E_FAIL, L"ClassInfo", L"中间层没有启动");
    return package;
  }

  FakeComponent classInfo{L"TavioMClass.ClassInfo"};
  bool answers = true;
  Vector source = List({Scenario(1, 101), Scenario(2, 102, 3), Scenario(3, 103, 2), Scenario(7, 107, 0x40000000)});
  Dictionary menu = Record({{L"FName", L"菜单"}});
  BillEnvironments environments;
};

TEST_F(BillEnvironmentsTest, EqualMasksCollapseToTheLastInTheFirstPlace) {
  source = List({Scenario(1, 10), Scenario(4, 40), Scenario(1, 11)});
  EXPECT_EQ(Show(environments.GetList()),
            "{1: {FMask: 1, FID: 11, FBillType: 1, Parent: 0, Level: 0}, "
            "4: {FMask: 4, FID: 40, FBillType: 1, Parent: 0, Level: 0}}");
  EXPECT_EQ(Show(source.Record(1)), "{FMask: 1, FID: 10, FBillType: 1}");
}

TEST_F(BillEnvironmentsTest, SortsTheTreeAndSharesItsRecords) {
  EXPECT_EQ(Show(environments.GetSortList()),
            "[{FMask: 7, FID: 107, FBillType: 1073741824, Parent: 0, Level: 0}, "
            "{FMask: 3, FID: 103, FBillType: 2, Parent: 7, Level: 1}, "
            "{FMask: 2, FID: 102, FBillType: 3, Parent: 3, Level: 2}, "
            "{FMask: 1, FID: 101, FBillType: 1, Parent: 3, Level: 2}]");
  EXPECT_EQ(environments.GetList().Object().Get(), environments.GetList().Object().Get());
  EXPECT_EQ(environments.GetSortListMsg().Object().Get(), environments.GetSortList().Object().Get());
  const auto* record = source.Record(4).Object().Get();
  EXPECT_EQ(environments.GetSortList().Record(1).Object().Get(), record);
  EXPECT_EQ(PackageAt(environments.GetList(), L"7"_key).Object().Get(), record);
  EXPECT_EQ(PackageAt(environments.GetList(4), L"7"_key).Object().Get(), record);
  EXPECT_EQ(environments.GetSortList(0, 107).Record(1).Object().Get(), record);
  EXPECT_EQ(environments.GetItem(7).Object().Get(), record);
  EXPECT_EQ(classInfo.Calls(L"GetBillEnvironments"), 1);
  EXPECT_EQ(environments.GetClassMenu().Object().Get(), menu.Object().Get());
  EXPECT_EQ(classInfo.Living(), 0);
}

TEST_F(BillEnvironmentsTest, FiltersByIdOrMask) {
  source.Add(Record({{L"FMask", 64}}));
  source.Add(Scenario(-8, 108));
  const struct {
    std::int32_t mask, id;
    const char *set, *sorted, *message;
  } cases[] = {
      // The record without FID has id 0 and so is in every list that is asked for by mask only.
      {2, 0, "102 103 107 empty ", "102 empty ", "107 103 102 empty "},
      {3, -1, "101 102 103 107 ", "103 102 101 ", "107 103 102 101 "},
      {0, 103, "103 ", "103 ", "103 "},
      {0, 999, "", "", ""},
      {1, 107, "101 103 107 ", "107 101 ", "107 103 101 "},
      {-8, 999, "empty 108 ", "108 ", "empty 108 "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.mask) + ", " + std::to_string(c.id));
    EXPECT_EQ(Ids(environments.GetList(c.mask, c.id)), c.set);
    EXPECT_EQ(Ids(environments.GetSortList(c.mask, c.id)), c.sorted);
    EXPECT_EQ(Ids(environments.GetSortListMsg(c.mask, c.id)), c.message);
  }
}

TEST_F(BillEnvironmentsTest, ListsTheScenariosOfABillType) {
  const std::string label = "TavioClassBillAction.BillEnvironments.GetBillTypeList";
  EXPECT_EQ(Ids(environments.GetBillTypeList(2)), "102 103 ");
  EXPECT_EQ(Ids(environments.GetBillTypeList(31)), "107 ");
  EXPECT_EQ(Ids(environments.GetBillTypeList(0)), "");
  log->entries.clear();
  EXPECT_FALSE(environments.GetBillTypeList(32));
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"GetBillTypeList", L"溢出")});
  EXPECT_EQ(Ids(environments.GetBillTypeList(1)), "101 102 ");
  EXPECT_EQ(log->entries, (std::vector<std::string>{"begin " + label, "end " + label + " 0", "begin " + label,
                                                    "end " + label + " 0"}));
}

TEST_F(BillEnvironmentsTest, FindsOneScenarioAndClosesTheLogOnEveryPath) {
  source.Add(Scenario(8, 103));
  const struct {
    std::int32_t mask, id, found;  // the mask, 0 for none
  } cases[] = {{3, 0, 3}, {3, 107, 3}, {5, 107, 0}, {0, 0, 0}, {0, 107, 7}, {0, 103, 3}, {0, 999, 0}};
  for (const auto& c : cases) {
    const auto scenario = environments.GetItem(c.mask, c.id);
    EXPECT_EQ(scenario ? scenario.Get(L"FMask"_key)->ToInt32() : 0, c.found) << c.mask << ", " << c.id;
    ASSERT_EQ(log->entries.size(), 2u) << c.mask << ", " << c.id;
    EXPECT_EQ(log->entries[0], "begin TavioClassBillAction.BillEnvironments.GetItem");
    log->entries.clear();
  }
}

TEST_F(BillEnvironmentsTest, EveryOperationTriesAgainAfterAFailedLoad) {
  const auto failedLoad = Report(L"Initialize", L"中间层没有启动");
  const auto unset = [](const wchar_t* operation) { return Report(operation, L"对象未设置"); };
  const struct {
    std::function<bool(BillEnvironments&)> run;
    Boxes boxes;
  } cases[] = {
      {[](auto& e) { return !!e.GetList(1); }, {failedLoad}},
      {[](auto& e) { return !!e.GetSortList(1); }, {failedLoad}},
      {[](auto& e) { return !!e.GetSortListMsg(1); }, {failedLoad}},
      {[](auto& e) { return !!e.GetBillTypeList(1); }, {failedLoad, unset(L"GetBillTypeList")}},
      {[](auto& e) { return !!e.GetItem(1); }, {failedLoad, unset(L"GetItem")}},
      {[](auto& e) { return !!e.GetItem(0, 101); }, {failedLoad, unset(L"GetItem")}},
      {[](auto& e) { return !!e.GetClassMenu(); }, {Report(L"GetClassMenu", L"中间层没有启动")}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    BillEnvironments fresh;
    answers = false;
    EXPECT_FALSE(c.run(fresh));
    EXPECT_EQ(boxes.Take(), c.boxes);
    EXPECT_EQ(classInfo.Living(), 0);
    answers = true;
    EXPECT_TRUE(c.run(fresh));
  }
}

TEST_F(BillEnvironmentsTest, AFailedSortLeavesWhatWasBuilt) {
  const std::pair<Item, const wchar_t*> cases[] = {
      {Record({{L"FID", 9}}), L"数据包缺少字段 FMask"},
      {Record({{L"FMask", L"all"}}), L"类型不匹配"},
      {5, L"类型不匹配"},
      {Value(), L"对象未设置"},
  };
  for (const auto& [item, description] : cases) {
    BillEnvironments fresh;
    source = List({Scenario(1, 101), item, Scenario(2, 102)});
    EXPECT_EQ(Ids(fresh.GetList()), "101 ");
    EXPECT_EQ(boxes.Take(), Boxes{Report(L"SortList", description)});
    EXPECT_EQ(Ids(fresh.GetList()), "101 ");  // the set is held, so nothing is loaded again
    EXPECT_FALSE(fresh.GetSortList());        // the list is not
    EXPECT_EQ(boxes.Take(), Boxes{Report(L"SortList", description)});
    source = List({Scenario(2, 102)});
    EXPECT_EQ(Ids(fresh.GetSortList()), "102 ");
  }
}

TEST_F(BillEnvironmentsTest, MoreThan32767ScenariosOverflow) {
  const auto scenario = Scenario(1, 101);
  source = List({});
  for (std::int32_t i = 0; i < 32767; ++i) source.Add(scenario);
  EXPECT_EQ(Ids(environments.GetSortList()), "101 ");
  BillEnvironments fresh;
  source.Add(scenario);
  EXPECT_FALSE(fresh.GetSortList());
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"SortList", L"溢出")});
  EXPECT_EQ(Ids(fresh.GetList()), "");
}

}  // namespace
}  // namespace tavio::test
