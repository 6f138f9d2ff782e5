#include "message/RecipientSelection.h"
#include "tests/support/FakeRecords.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using Rows = std::vector<std::string>;

class RecipientSelectionTest : public LibraryTest {
 protected:
  RecipientSelectionTest() { props->props = L"UserID=1;ConnectString={Server=a;Database=b};"; }

  // "KEY NAME" of each row.
  static Rows ListedOf(const Dictionary& users) {
    RecipientSelection selection;
    selection.UserDct(users);
    EXPECT_TRUE(selection.InitForm());
    Rows rows;
    for (const auto& row : selection.Rows()) rows.push_back(Utf8(row.key + L" " + row.name));
    return rows;
  }
};

TEST_F(RecipientSelectionTest, MissingNamesComeFromThePlatformIntoTheEntries) {
  FakeComponent billInfo(L"TavioMBOSMultiCheck.BillInfo");
  FakeRecords records(
      List({Record({{L"FUserID", 4}, {L"FName", L"王芳"}, {L"FUserName", L"wang"}}),
            Record({{L"FUserID", 99}, {L"FName", L"nobody's"}}), Record({{L"FUserID", L"5"}, {L"FUserName", L"li"}}),
            Record({{L"FUserID", 3}, {L"FName", L"not asked for"}})}));
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

TEST_F(RecipientSelectionTest, HandsBackACopyWithoutTheUnticked) {
  const auto user = Record({{L"FName", L"a"}});
  const auto users = Record({{L"3", user}, {L"4", L"not listed"}, {L"5", user}, {L"6", user}});
  RecipientSelection selection;
  selection.UserDct(users);
  ASSERT_TRUE(selection.InitForm());
  EXPECT_FALSE(selection.ShowResult());
  selection.Tick(1, false);
  selection.Send();
  EXPECT_TRUE(selection.ShowResult());
  EXPECT_EQ(Show(selection.UserDct()), R"({3: {FName: "a"}, 4: "not listed", 6: {FName: "a"}})");
  EXPECT_EQ(users.Count(), 4);
}

}  // namespace
}  // namespace tavio::test
