#include "tests/library/DeliveryTest.h"
#include "tests/support/FakeRecords.h"

namespace tavio::test {
namespace {

using Entries = std::vector<std::string>;

class SendSmsTest : public DeliveryTest {
 protected:
  SendSmsTest() {
    gateway.emplace(L"MorlaMobileOpen.MobileOpen");
    gateway->On(L"SmsSendForBillCheck", [this](Arguments& a) {
      EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_DISPATCH);
      requests.push_back(Show(a.At(0)));
      return Value(L"ignored");
    });
  }

  static std::string Request(const std::string& numbers) {
    return R"([{Recipients: ")" + numbers + R"(", SMContent: "单据 [FBillNo] : 单号 CG001)" + "\r\n" +
           R"(请处理", PropsString: "Language=chs;UserID=16394;UserName=Ann;", SmsIsBack: false, BillType: 5, BillNo: 77}])";
  }

  std::optional<FakeComponent> gateway;
  Entries requests;
};

TEST_F(SendSmsTest, ShortMessageGoesToTheListedUsers) {
  EXPECT_TRUE(message.SendShortMessage());
  EXPECT_EQ(requests, Entries{Request("13800000001,13800000002")});
  EXPECT_EQ(users->asked, Entries{"U [{FUserID: 1}, {FUserID: 2}]"});
  EXPECT_EQ(gateway->Living() + users->Living(), 0);
}

// The approval notice: user 1 must be told, user 2 need not.
class ApprovalNoticeTest : public SendSmsTest {
 protected:
  ApprovalNoticeTest() {
    users->On(L"GetIsUserNeedSend", [this](Arguments& a) {
      EXPECT_EQ(a.Raw(1).vt, VT_BYREF | VT_DISPATCH);
      questions.push_back(Show(a.At(0)) + " " + Show(a.At(1)) + " " + Show(a.At(2)));
      return told.Copy();
    });
    classInfo.On(L"GetData", [this](Arguments& a) {
      queries.push_back(Utf8(a.At(1).ToText()));
      return Value(rows.emplace(List({Record({{L"FMobilePhone", L"13800000001"}})})).New());
    });
  }

  static Dictionary Answer(const Item& user, const Item& needed) {
    return Record({{L"FUserID", user.value}, {L"FIsNeedSend", needed.value}});
  }

  FakeComponent classInfo{L"TavioMClass.ClassInfo"};
  std::optional<FakeRecords> rows;
  Value told = List({Answer(1, true), Answer(2, false)}).AsValue();
  Entries questions, queries;
};

TEST_F(ApprovalNoticeTest, GoesToThoseWhoMustBeTold) {
  const std::string label = "TavioClassBillAction.Message.SendSMS 多级审核消息";
  EXPECT_TRUE(message.SendSMS());
  EXPECT_EQ(questions, Entries{R"("Language=chs;UserID=16394;UserName=Ann;" )"
                               "[{FID: 77, FUserID: 1}, {FID: 77, FUserID: 2}] 3s"});
  EXPECT_EQ(queries, Entries{"SELECT  b.FMobilePhone FROM t_User a  LEFT OUTER JOIN t_Emp b ON b.FItemID = a.FEmpID "
                             "Where a.FUserID in (1) AND a.FForbidden <> 1"});
  EXPECT_EQ(requests, Entries{Request("13800000001")});
  EXPECT_EQ(log->entries.front(), "begin " + label);
  EXPECT_EQ(log->entries.back(), "end " + label + " 1");
  EXPECT_EQ(users->Living() + classInfo.Living() + rows->Living() + gateway->Living(), 0);
}

TEST_F(ApprovalNoticeTest, EndsSilentlyWhereNobodyIsToBeTold) {
  for (const auto& answers :
       {Item(Value()), Item(List({Answer(1, false)})), Item(List({Answer(L"1) or (1=1", true)}))}) {
    told = answers.value.Copy();
    EXPECT_FALSE(message.SendSMS()) << Show(told);
  }
  EXPECT_TRUE(queries.empty());
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.Message.SendSMS 多级审核消息 1");
  EXPECT_EQ(gateway->Created(), 0);
}

}  // namespace
}  // namespace tavio::test
