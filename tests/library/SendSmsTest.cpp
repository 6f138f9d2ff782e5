#include "tests/library/DeliveryTest.h"
#include "tests/support/FakeRecords.h"
#include "tests/support/ForeignRecord.h"

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
  users->known[L"U"].Add(Record({{L"Mobile", L"3800000001"}, {L"Email", L"c@x"}}));
  users->known[L"U"].Add(Record({{L"Mobile", L""}}));
  users->known[L"U"].Add(Record({{L"Mobile", L"013800000002"}}));
  EXPECT_TRUE(message.SendShortMessage());
  EXPECT_EQ(requests, Entries{Request("13800000001,13800000002,013800000002")});
  EXPECT_EQ(users->asked, Entries{"U [{FUserID: 1}, {FUserID: 2}]"});
  EXPECT_EQ(gateway->Living() + users->Living(), 0);
}

TEST_F(SendSmsTest, NobodyToSendToOrNoGatewayIsSilent) {
  EXPECT_FALSE(Message().SendShortMessage());
  Recipients(L"SMSUsers", Record({}));
  EXPECT_FALSE(message.SendShortMessage());
  EXPECT_EQ(gateway->Created(), 0);
  Recipients(L"SMSUsers", TwoUsers());
  gateway->On(L"SmsSendForBillCheck", Failing(L"断开"));
  EXPECT_FALSE(message.SendShortMessage());
  gateway.reset();
  EXPECT_FALSE(message.SendShortMessage());
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
      EXPECT_EQ(Show(a.At(0)), R"("Language=chs;UserID=16394;UserName=Ann;")");
      queries.push_back(Utf8(a.At(1).ToText()));
      return Value(rows.emplace(numbers).New());
    });
  }

  static Dictionary Answer(const Item& user, const Item& needed) {
    return Record({{L"FUserID", user.value}, {L"FIsNeedSend", needed.value}});
  }
  static Vector Numbers(std::initializer_list<Item> numbers) {
    const auto list = List({});
    for (const auto& number : numbers) list.Add(Record({{L"FMobilePhone", number}}));
    return list;
  }
  static Value Null() {
    Value null;
    null.InPlace()->vt = VT_NULL;
    return null;
  }
  static std::string Query(const std::string& ids) {
    return "SELECT  b.FMobilePhone FROM t_User a  LEFT OUTER JOIN t_Emp b ON b.FItemID = a.FEmpID Where a.FUserID in "
           "(" +
           ids + ") AND a.FForbidden <> 1";
  }

  FakeComponent classInfo{L"TavioMClass.ClassInfo"};
  std::optional<FakeRecords> rows;
  Vector numbers = Numbers({L"13800000001"});
  Value told = List({Answer(1, true), Answer(2, false)}).AsValue();
  Entries questions, queries;
};

TEST_F(ApprovalNoticeTest, GoesToThoseWhoMustBeTold) {
  const std::string label = "TavioClassBillAction.Message.SendSMS 多级审核消息";
  EXPECT_TRUE(message.SendSMS());
  EXPECT_EQ(questions, Entries{R"("Language=chs;UserID=16394;UserName=Ann;" )"
                               "[{FID: 77, FUserID: 1}, {FID: 77, FUserID: 2}] 3s"});
  EXPECT_EQ(queries, Entries{Query("1")});
  EXPECT_EQ(requests, Entries{Request("13800000001")});
  EXPECT_EQ(log->entries.front(), "begin " + label);
  EXPECT_EQ(log->entries.back(), "end " + label + " 1");
  EXPECT_EQ(users->Living() + classInfo.Living() + rows->Living() + gateway->Living(), 0);
}

TEST_F(ApprovalNoticeTest, TakesBothKindsOfAnswers) {
  numbers = Numbers({L"138", Null(), L"", L"13800000002", L"138"});
  told = Record({{L"a", Answer(L"1", 1)}, {L"b", Record({{L"FUserID", 3}})}, {L"c", Answer(2, L"True")}}).AsValue();
  EXPECT_TRUE(message.SendSMS());
  EXPECT_EQ(queries, Entries{Query("1,2")});
  EXPECT_EQ(requests, Entries{Request("138,13800000002")});
}

TEST_F(ApprovalNoticeTest, ExcludedUsersAreNoCandidates) {
  message.ExcludeUser(List({2}));
  EXPECT_TRUE(message.SendSMS());
  EXPECT_NE(questions.at(0).find("[{FID: 77, FUserID: 1}]"), std::string::npos) << questions.at(0);
  EXPECT_EQ(PackageAt(package, L"MessageUsers"_key).Count(), 2);
}

TEST_F(ApprovalNoticeTest, EndsSilentlyWhereNobodyIsToBeTold) {
  const struct {
    Item recipients;
    Item told;
    std::size_t questions, queries;
  } cases[] = {
      {Value(), List({}), 0, 0},
      {Record({{L"Ann", Record({})}}), List({}), 0, 0},
      {TwoUsers(), Value(), 1, 0},
      {TwoUsers(), List({Answer(1, false)}), 1, 0},
      {TwoUsers(), List({Answer(L"1) or (1=1", true)}), 1, 0},
      {TwoUsers(), List({Answer(1, true)}), 1, 1},
  };
  numbers = Numbers({Null(), L""});
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    Recipients(L"MessageUsers", c.recipients);
    told = c.told.value.Copy();
    questions.clear();
    queries.clear();
    EXPECT_FALSE(message.SendSMS());
    EXPECT_EQ(questions.size(), c.questions);
    EXPECT_EQ(queries.size(), c.queries);
    EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.Message.SendSMS 多级审核消息 1");
  }
  EXPECT_FALSE(Message().SendSMS());
  EXPECT_EQ(gateway->Created(), 0);
}

}  // namespace
}  // namespace tavio::test
