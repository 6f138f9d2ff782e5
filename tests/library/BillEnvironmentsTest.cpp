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
  const auto* record = source.Record(4).Object().Get();
  EXPECT_EQ(environments.GetSortList().Record(1).Object().Get(), record);
  EXPECT_EQ(PackageAt(environments.GetList(), L"7"_key).Object().Get(), record);
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

TEST_F(BillEnvironmentsTest, TriesAgainAfterAFailedLoad) {
  const auto failedLoad = Report(L"Initialize", L"中间层没有启动");
  answers = false;
  EXPECT_FALSE(environments.GetSortList());
  EXPECT_FALSE(environments.GetItem(0, 101));
  EXPECT_FALSE(environments.GetClassMenu());
  EXPECT_EQ(boxes.Take(), (Boxes{failedLoad, failedLoad, Report(L"GetItem", L"对象未设置"),
                                 Report(L"GetClassMenu", L"中间层没有启动")}));
  EXPECT_EQ(classInfo.Living(), 0);
  answers = true;
  EXPECT_EQ(environments.GetItem(0, 101).Object().Get(), source.Record(1).Object().Get());
  EXPECT_FALSE(environments.GetItem(5, 107)) << "a mask that is given is exact";
}

}  // namespace
}  // namespace tavio::test
