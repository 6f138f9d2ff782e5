#include "delivery/ApprovalNotice.h"

#include <string>
#include <unordered_set>

#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/RecordSet.h"
#include "foundation/packages/Walk.h"

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
    for (const auto& record : Entries(Dictionary(object))) visit(record.Record());
  } else {
    for (const auto& record : Records(Vector(object))) visit(record);
  }
}

void AppendJoined(Text& list, TextView item) {
  if (!list.empty()) list += L',';
  list += item;
}

Vector CandidatesOf(const Dictionary& recipients, std::int32_t billId) {
  const auto candidates = Vector::New();
  for (const auto& recipient : Entries(recipients)) {
    const auto candidate = Dictionary::New();
    candidate.Set(L"FID"_key, Value(billId));
    candidate.Set(L"FUserID"_key, Value(Value(recipient.KeyView()).ToInt32()));
    candidates.Add(candidate);
  }
  return candidates;
}

// The IDs of those candidates who must be told, joined by ",". They are numbers and nothing else: they become SQL.
Text UsersToTell(Vector candidates) {
  Text users;
  const auto platform = Component::Create(L"TavioMSmsManager.clsBillUseInfo");
  const auto told = platform.Call(L"GetIsUserNeedSend", GetPropsString(), ByRef(candidates), kApprovalNotice);
  ForEachRecord(told, [&](const Dictionary& user) {
    if (!FlagAt(user, L"FIsNeedSend"_key)) return;
    AppendJoined(users, std::to_wstring(user.GetValue(L"FUserID"_key)->ToInt32()));
  });
  return users;
}

Text NumbersOf(const Text& users) {
  const Text sql =
      L"SELECT  b.FMobilePhone FROM t_User a "
      L" LEFT OUTER JOIN t_Emp b ON b.FItemID = a.FEmpID Where a.FUserID in (" +
      users + L") AND a.FForbidden <> 1";
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  Text joined;
  std::unordered_set<Text> known;
  for (const RecordSet rows(classInfo.Call(L"GetData", GetPropsString(), sql)); !rows.EndReached(); rows.MoveNext()) {
    Text number;
    rows.Field(L"FMobilePhone").AppendTo(number);
    if (!number.empty() && known.insert(number).second) AppendJoined(joined, number);
  }
  return joined;
}

}  // namespace

Text NumbersToNotify(const Dictionary& recipients, std::int32_t billId) {
  if (!recipients) return {};
  const auto candidates = CandidatesOf(recipients, billId);
  if (candidates.Count() == 0) return {};
  const auto users = UsersToTell(candidates);
  return users.empty() ? Text() : NumbersOf(users);
}

}  // namespace tavio
