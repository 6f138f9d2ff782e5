#include "message/RecipientSelection.h"
#include "tests/support/FakeRecords.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using Rows = std::vector<std::string>;

class RecipientSelectionTest : public LibraryTest {
 protected:
  RecipientSelectionTest() { props->props = L"UserID=1;ConnectString={Server=a;Database=b};"; }

  // "KEY NAME" of each row.
  static Rows Listed(const RecipientSelection& selection) {
    Rows rows;
    for (const auto& row : selection.Rows()) rows.push_back(Utf8(row.key + L" " + row.name));
    return rows;
  }
  static Rows ListedOf(const Dictionary& users) {
    RecipientSelection selection;
    selection.UserDct(users);
    const bool anybody = selection.InitForm();
    EXPECT_EQ(anybody, !selection.Rows().empty());
    return Listed(selection);
  }
};

TEST_F(RecipientSelectionTest, ListsEntriesThatArePackages) {
  const auto users = Record({{L"3", Record({{L"FUserID", 3}, {L"FName", L"张伟"}})},
                             {L"4", L"text"},
                             {L"5", Record({})},
                             {L"6", Dictionary()},
                             {L"7", List({1})},
                             {L"10", Record({{L"FName", 12}})},
                             {L"11", Record({{L"FName", L""}})}});
  EXPECT_EQ(ListedOf(users), (Rows{"3 张伟", "5 Unknown", "10 12", "11 "}));
  EXPECT_EQ(ListedOf(Record({{L"1", 5}})), Rows());
}

TEST_F(RecipientSelectionTest, MissingNamesComeFromThePlatformIntoTheEntries) {
  FakeComponent billInfo(L"TavioMBOSMultiCheck.BillInfo");
  FakeRecords records(
      List({Record({{L"FUserID", 4}, {L"FName", L"王芳"}, {L"FUserName", L"wang"}}),
            Record({{L"FUserID", 99}, {L"FName", L"nobody's"}}), Record({{L"FUserID", L"5"}, {L"FUserName", L"li"}}),
            Record({{L"FUserID", 3}, {L"FName", L"not asked for"}}), Record({{L"FName", L"without ID"}}),
            Record({{L"FUserID", 6}, {L"FName", L""}})}));
  billInfo.On(L"GetUsers", [&](Arguments& a) {
    EXPECT_EQ(a.Count(), 1u);
    EXPECT_EQ(Show(a.At(0)), R"("Server=a;Database=b")");
    return Value(records.New());
  });
  const auto known = Record({{L"3", Record({{L"FName", L"张伟"}})}});
  EXPECT_EQ(ListedOf(known), Rows{"3 张伟"});
  EXPECT_EQ(billInfo.Created(), 0) << "nothing is asked where every name is known";
  known.Set(L"4"_key, Record({{L"FUserID", 4}}));
  known.Set(L"5"_key, Record({{L"FName", L"Unknown"}}));
  known.Set(L"6"_key, Record({}));
  EXPECT_EQ(ListedOf(known), (Rows{"3 张伟", "4 王芳", "5 li", "6 Unknown"}));
  EXPECT_EQ(Show(known), R"({3: {FName: "张伟"}, 4: {FUserID: 4, FName: "王芳"}, 5: {FName: "li"}, 6: {}})");
  EXPECT_EQ(billInfo.Calls(L"GetUsers"), 1);
}

TEST_F(RecipientSelectionTest, WhatThePlatformFailsToNameStaysUnknown) {
  const auto users = [] { return Record({{L"4", Record({})}, {L"5", Record({})}}); };
  const Rows unknown = {"4 Unknown", "5 Unknown"};
  EXPECT_EQ(ListedOf(users()), unknown) << "no component";
  FakeComponent billInfo(L"TavioMBOSMultiCheck.BillInfo");
  FakeRecords records(List({Record({{L"FUserID", 4}, {L"FName", L"王芳"}}), Record({})}));
  records.On(L"MoveNext", Failing(L"断开"));
  billInfo.On(L"GetUsers", Failing(L"断开"));
  EXPECT_EQ(ListedOf(users()), unknown);
  billInfo.On(L"GetUsers", [](Arguments&) { return Value(); });
  EXPECT_EQ(ListedOf(users()), unknown);
  billInfo.On(L"GetUsers", [&](Arguments&) { return Value(records.New()); });
  EXPECT_EQ(ListedOf(users()), (Rows{"4 王芳", "5 Unknown"}));
  props->props = L"UserID=1;";
  EXPECT_EQ(ListedOf(users()), unknown) << "no connection";
}

TEST_F(RecipientSelectionTest, HandsBackACopyWithoutTheUnticked) {
  const auto user = Record({{L"FName", L"a"}});
  const auto users = Record({{L"3", user}, {L"4", L"not listed"}, {L"5", user}, {L"6", user}});
  RecipientSelection selection;
  selection.UserDct(users);
  ASSERT_TRUE(selection.InitForm());
  EXPECT_FALSE(selection.ShowResult());
  selection.Tick(1, false);
  selection.Tick(2, false);
  selection.Tick(2, true);
  selection.Send();
  EXPECT_TRUE(selection.ShowResult());
  const auto chosen = selection.UserDct();
  EXPECT_EQ(Show(chosen), R"({3: {FName: "a"}, 4: "not listed", 6: {FName: "a"}})");
  EXPECT_EQ(selection.UserDct().Object().Get(), chosen.Object().Get());
  EXPECT_EQ(PackageAt(chosen, L"3"_key).Object().Get(), user.Object().Get());
  selection.Tick(0, false);
  selection.Tick(2, false);
  EXPECT_EQ(Show(selection.UserDct()), R"({4: "not listed"})");
  EXPECT_EQ(users.Count(), 4);
}

}  // namespace
}  // namespace tavio::test
