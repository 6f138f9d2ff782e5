#include "message/Message.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

class RecipientListsTest : public LibraryTest {
 protected:
  RecipientListsTest() {
    message.ClassType(Record({}));
    message.TableInfo(Record({}));
  }
  Value Users() const { return message.GetMessage().Get(L"MessageUsers"_key)->Copy(); }

  Message message;
};

TEST_F(RecipientListsTest, EachEditGivesThePackageANewList) {
  EXPECT_FALSE(message.RemoveAllUsers());
  EXPECT_FALSE(message.GetMessage()) << "no package is made to empty it";
  EXPECT_TRUE(message.AddUser(25));
  message.GetMessage().Set(L"FID"_key, Value(9));
  const auto first = Users();
  EXPECT_TRUE(message.AddUser(25));
  EXPECT_TRUE(message.AddUser(-3));
  EXPECT_EQ(Show(Users()), "{25: {FUserID: 25, FMessageID: 0s}, -3: {FUserID: -3, FMessageID: 9}}");
  EXPECT_EQ(Show(first), "{25: {FUserID: 25, FMessageID: 0s}}");
  const auto second = Users();
  EXPECT_FALSE(message.RemoveUser(4));
  EXPECT_NE(Users().ToObject().Get(), second.ToObject().Get());
  EXPECT_TRUE(message.RemoveUser(25));
  EXPECT_EQ(Show(Users()), "{-3: {FUserID: -3, FMessageID: 9}}");
  EXPECT_FALSE(message.RemoveAllUsers());
  EXPECT_EQ(Show(Users()), "{}");
  const std::vector<std::string> whole(log->entries.begin(), log->entries.begin() + 4);
  EXPECT_EQ(whole, (std::vector<std::string>{"begin TavioClassBillAction.Message.AddUser 向消息用户列表中加入用户",
                                             "begin TavioClassBillAction.Message.NewMessage 新建消息",
                                             "end TavioClassBillAction.Message.NewMessage 新建消息 1",
                                             "end TavioClassBillAction.Message.AddUser 向消息用户列表中加入用户 1"}));
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.Message.RemoveUser 从消息用户列表中删除用户 1");
}

TEST_F(RecipientListsTest, FailedCopyIsReported) {
  ForeignRecord uncopied(Record({{L"4", Record({})}}));
  uncopied.On(L"Clone", Failing(L"不能复制"));
  const auto label = [](const wchar_t* operation, const wchar_t* description) {
    return Warning(L"TavioClassBillAction.Message : " + Text(operation) + L"\r\n" + description);
  };
  message.SetMessage(Record({{L"FID", 1}, {L"FMessage", L""}, {L"MessageUsers", uncopied.Handle()}}));
  EXPECT_FALSE(message.AddUser(5));
  EXPECT_TRUE(message.RemoveUser(4)) << "removed before the failure";
  EXPECT_EQ(boxes.Take(), (Boxes{label(L"AddUser", L"不能复制"), label(L"RemoveUser", L"不能复制")}));
}

}  // namespace
}  // namespace tavio::test
