#include <algorithm>
#include <string>
#include <vector>

#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/RecordSet.h"
#include "message/Message.h"

namespace tavio {
namespace {

// The platform's number of this kind of notice.
constexpr std::int16_t kApprovalNotice = 3;

// Calls `visit` with each record of a package, which the platform answers as a keyed or as an indexed one.
template <class Visit>
void ForEachRecord(const Value& package, Visit&& visit) {
  const auto object = package.ToObject();
  if (!object) return;
  if (HasMember(object.Get(), L"Lookup")) {
    const Dictionary records(object);
    const auto count = records.Count();
    for (std::int32_t i = 1; i <= count; ++i) visit(Dictionary(records.At(i).Stored()));
  } else {
    const Vector records(object);
    const auto count = records.Count();
    for (std::int32_t i = 1; i <= count; ++i) visit(records.Record(i));
  }
}

void AppendJoined(Text& list, TextView item) {
  if (!list.empty()) list += L',';
  list += item;
}

// The IDs of those candidates who must be told, joined by ",". They are numbers and nothing else: they become SQL.
Text UsersToTell(Vector candidates) {
  Text users;
  const auto platform = Component::Create(L"TavioMSmsManager.clsBillUseInfo");
  const auto told = platform.Call(L"GetIsUserNeedSend", GetPropsString(), ByRef(candidates), kApprovalNotice);
  ForEachRecord(told, [&](const Dictionary& user) {
    if (!user.GetValue(L"FIsNeedSend"_key)->OrEmpty().ToBool()) return;
    AppendJoined(users, std::to_wstring(user.GetValue(L"FUserID"_key)->ToInt32()));
  });
  return users;
}

// The mobile numbers of those users who may log in, each once, joined by ",".
Text NumbersOf(const Text& users) {
  const Text sql =
      L"SELECT  b.FMobilePhone FROM t_User a "
      L" LEFT OUTER JOIN t_Emp b ON b.FItemID = a.FEmpID Where a.FUserID in (" +
      users + L") AND a.FForbidden <> 1";
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  std::vector<Text> numbers;
  for (const RecordSet rows(classInfo.Call(L"GetData", GetPropsString(), sql)); !rows.EndReached(); rows.MoveNext()) {
    Text number;
    rows.Field(L"FMobilePhone").AppendTo(number);
    const bool known = std::find(numbers.begin(), numbers.end(), number) != numbers.end();
    if (!number.empty() && !known) numbers.push_back(number);
  }
  Text joined;
  for (const auto& number : numbers) AppendJoined(joined, number);
  return joined;
}

}  // namespace

void Message::SendToNumbers(const Text& numbers) {
  Text content;
  message_.GetValue(L"FTitle"_key)->AppendTo(content);
  content += L" : " + TransValues(message_.Get(L"FMessage"_key)->ToText());
  const auto request = Dictionary::New();
  request.Set(L"Recipients"_key, Value(TextView(numbers)));
  request.Set(L"SMContent"_key, Value(TextView(content)));
  request.Set(L"PropsString"_key, Value(TextView(GetPropsString())));
  request.Set(L"SmsIsBack"_key, Value(false));
  request.Set(L"BillType"_key, Value(classTypeId_));
  request.Set(L"BillNo"_key, Value(billId_));
  auto requests = Vector::New();
  requests.Add(request);
  Component::Create(L"MorlaMobileOpen.MobileOpen").Call(L"SmsSendForBillCheck", ByRef(requests));
}

bool Message::SendShortMessage() noexcept {
  return Operation<bool>({}, [&](bool& sent) {
    const auto numbers = AddressesOf(L"SMSUsers"_key, L"Mobile"_key, L',');
    if (numbers.empty()) return;
    SendToNumbers(numbers);
    sent = true;
  });
}

// The recipients of the system message, as those whom an approval notice may concern.
Vector Message::NoticeCandidates() const {
  const auto candidates = Vector::New();
  const auto stored = PackageAt(message_, L"MessageUsers"_key);
  if (!stored) return candidates;
  const auto recipients = stored.CloneAll();
  RemoveFrom(recipients);
  const auto count = recipients.Count();
  for (std::int32_t i = 1; i <= count; ++i) {
    const auto candidate = Dictionary::New();
    candidate.Set(L"FID"_key, Value(billId_));
    candidate.Set(L"FUserID"_key, Value(Value(recipients.At(i).KeyView()).ToInt32()));
    candidates.Add(candidate);
  }
  return candidates;
}

bool Message::SendSMS() noexcept {
  return Operation<bool>({.log = L"TavioClassBillAction.Message.SendSMS 多级审核消息", .outcomeAfterFailure = 1},
                         [&](bool& sent) {
                           const auto candidates = NoticeCandidates();
                           if (candidates.Count() == 0) return;
                           const auto users = UsersToTell(candidates);
                           if (users.empty()) return;
                           const auto numbers = NumbersOf(users);
                           if (numbers.empty()) return;
                           SendToNumbers(numbers);
                           sent = true;
                         });
}

}  // namespace tavio
