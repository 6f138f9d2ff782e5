#include "message/Message.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

const char kNew[] = R"({FID: 0s, FTitle: "", FMessage: "", FMessageDescriptions: "", FSendType: 1s, )"
                    R"(MessageUsers: {}, EmailUsers: {}, SMSUsers: {}})";

class MessagePackageTest : public LibraryTest {
 protected:
  MessagePackageTest() {
    message.ClassType(Record({}));
    message.TableInfo(Record({}));
  }

  Value Users() const { return message.GetMessage().Get(L"MessageUsers"_key)->Copy(); }

  Message message;
};

TEST_F(MessagePackageTest, NewMessageHasThreeListsOfItsOwn) {
  EXPECT_FALSE(message.GetMessage());
  message.NewMessage();
  EXPECT_EQ(Show(message.GetMessage()), kNew);
  PackageAt(message.GetMessage(), L"EmailUsers"_key).Set(L"5"_key, Value(1));
  EXPECT_EQ(Show(*message.GetMessage().Get(L"SMSUsers"_key)), "{}");
  EXPECT_EQ(log->entries, (std::vector<std::string>{"begin TavioClassBillAction.Message.NewMessage 新建消息",
                                                    "end TavioClassBillAction.Message.NewMessage 新建消息 1"}));
}

TEST_F(MessagePackageTest, SetMessageDescribesThePackageItself) {
  ASSERT_TRUE(message.SetMessage(Record({{L"FMessage", L"单号[FBillNo]"}, {L"FOwn", 1}})));
  EXPECT_EQ(Show(message.GetMessage()),
            R"({FMessage: "单号[FBillNo]", FOwn: 1, FMessageDescriptions: "单号[FBillNo]"})");
  message.AddVariable(Record({{L"FName", L"FBillNo"}, {L"FCaption", L"编号"}}));
  ForeignRecord foreign(Record({{L"FMessage", L"单号[FBillNo]"}}));
  const auto given = foreign.Handle();
  ASSERT_TRUE(message.SetMessage(given));
  EXPECT_EQ(Show(given), R"({FMessage: "单号[FBillNo]", FMessageDescriptions: "单号[编号]"})");
  EXPECT_EQ(message.GetMessage().Object().Get(), given.Object().Get());
  for (const auto& empty : {Record({}), Dictionary()}) {
    EXPECT_TRUE(message.SetMessage(empty));
    EXPECT_EQ(Show(message.GetMessage()), kNew);
    EXPECT_NE(message.GetMessage().Object().Get(), empty.Object().Get());
  }
}

TEST_F(MessagePackageTest, EachEditOfTheUsersGivesThePackageANewList) {
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

TEST_F(MessagePackageTest, FailedCopyOfTheUsersIsReported) {
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
