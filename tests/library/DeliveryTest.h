#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "message/Message.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {

// TavioMSmsManager.clsBillUseInfo: what it knows by type letter, and what it was asked.
class FakeUsers : public FakeComponent {
 public:
  FakeUsers() : FakeComponent(L"TavioMSmsManager.clsBillUseInfo") {
    On(L"GetUserInfo", [this](Arguments& a) {
      EXPECT_EQ(a.Count(), 3u);
      EXPECT_EQ(Show(a.At(0)), R"("Language=chs;UserID=16394;UserName=Ann;")");
      EXPECT_EQ(a.Raw(2).vt, VT_BYREF | VT_DISPATCH);
      asked.push_back(Utf8(a.At(1).ToText()) + " " + Show(a.At(2)));
      const auto found = known.find(a.At(1).ToText());
      return found == known.end() ? Value() : found->second.AsValue();
    });
  }

  std::map<Text, Vector> known;
  std::vector<std::string> asked;
};

// A message about bill 77 of class type 5, to users 1 and 2 by any road.
class DeliveryTest : public LibraryTest {
 protected:
  DeliveryTest() {
    users.emplace();
    users->known[L"U"] = List({Record({{L"FUserID", 1}, {L"Email", L"ann@x.com"}, {L"Mobile", L"13800000001"}}),
                               Record({{L"FUserID", 2}, {L"Email", L"bob@x.com"}, {L"Mobile", L"13800000002"}})});
    message.ClassTypeID(5);
    message.ClassType(Record({{L"FName_CHS", L"采购申请"}, {L"FName_ENU", L"Requisition"}}));
    message.TableInfo(Record({}));
    message.AddVariable(Record({{L"FName", L"FBillNo"}, {L"FCaption", L"单号"}}));
    message.RefreshVariableValue(Record({{L"FID", 77}, {L"Page1", Record({{L"FBillNo", L"CG001"}})}}));
    message.SetMessage(package);
    log->entries.clear();
  }

  static Dictionary TwoUsers() {
    return Record({{L"1", Record({{L"FUserID", 1}})}, {L"2", Record({{L"FUserID", 2}})}});
  }

  std::optional<FakeUsers> users;
  Dictionary package = Record({{L"FTitle", L"单据 [FBillNo]"},
                               {L"FMessage", L"单号 [FBillNo]\r\n请处理"},
                               {L"MessageUsers", TwoUsers()},
                               {L"EmailUsers", TwoUsers()},
                               {L"SMSUsers", TwoUsers()}});
  Message message;
};

}  // namespace tavio::test
