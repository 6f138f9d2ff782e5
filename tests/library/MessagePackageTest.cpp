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

}  // namespace
}  // namespace tavio::test
