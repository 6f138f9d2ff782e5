#include "development/business/BillUseInfo.h"

#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Error.h"
#include "foundation/values/Text.h"

namespace tavio::development {
namespace {

std::vector<std::int32_t> UserIds(const Value& list) {
  std::vector<std::int32_t> ids;
  if (!list.HoldsObject()) return ids;
  for (const auto& record : Records(Vector(list))) ids.push_back(NumberAt(record, L"FUserID"_key));
  return ids;
}

Text QueryFor(const Text& type) {
  const Text fields = L"SELECT FItemID, FName, FEmail, FMobilePhone FROM ";
  if (type == L"E") return fields + L"t_Emp WHERE FItemID = ?";
  if (type == L"C" || type == L"S") return fields + L"t_Partner WHERE FItemID = ? AND FType = '" + type + L"'";
  if (type != L"U") throw Error(E_INVALIDARG, L"TavioMSmsManager.clsBillUseInfo", L"未知的用户类型 " + type);
  return L"SELECT a.FUserID, a.FName, b.FEmail, b.FMobilePhone FROM t_User a "
         L"LEFT OUTER JOIN t_Emp b ON b.FItemID = a.FEmpID WHERE a.FUserID = ? AND a.FForbidden <> 1";
}

Value TextOrNothing(const Value& cell) { return cell.IsNull() ? Value(L"") : cell.Copy(); }

}  // namespace

BillUseInfo::BillUseInfo() {
  AddServed(L"GetIsUserNeedSend", [this](Arguments& a) { return GetIsUserNeedSend(a); });
  AddServed(L"GetUserInfo", [this](Arguments& a) { return GetUserInfo(a); });
  AddKept(L"UserInfoEx", userInfoEx_);
}

Value BillUseInfo::GetIsUserNeedSend(const Arguments& arguments) {
  const std::int32_t kind = arguments.At(2).ToInt32();
  const Dictionary answers = Dictionary::New();
  for (const std::int32_t user : UserIds(arguments.At(1))) {
    const Value told =
        Store().FirstCell(L"SELECT FIsNeedSend FROM t_UserNeedSend WHERE FUserID = ? AND FKind = ?", user, kind);
    const Dictionary answer = Dictionary::New();
    answer.Set(L"FUserID"_key, Value(user));
    answer.Set(L"FIsNeedSend"_key, Value(told.ToInt32() != 0));
    answers.Set(Key(user), answer);
  }
  return answers.AsValue();
}

Value BillUseInfo::GetUserInfo(const Arguments& arguments) {
  const Text sql = QueryFor(ToUpper(arguments.At(1).ToText()));
  const Vector known = Vector::New();
  for (const std::int32_t user : UserIds(arguments.At(2))) {
    const Rows rows = Store().Query(sql, user);
    if (rows.IsEmpty()) continue;
    const Dictionary record = Dictionary::New();
    record.Set(L"FUserID"_key, Value(user));
    record.Set(L"FName"_key, rows.cells[0][1]);
    record.Set(L"Email"_key, TextOrNothing(rows.cells[0][2]));
    record.Set(L"Mobile"_key, TextOrNothing(rows.cells[0][3]));
    known.Add(record);
  }
  return known.Count() ? known.AsValue() : Value();
}

}  // namespace tavio::development
