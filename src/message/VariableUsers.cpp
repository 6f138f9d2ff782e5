#include "message/VariableUsers.h"

#include <string>

#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/RecordSet.h"
#include "foundation/packages/Walk.h"
#include "message/Recipients.h"

namespace tavio {
namespace {

constexpr std::int32_t kNobody = 0;

// What identifies nobody is no failure: the others get their message.
std::int32_t IdIn(const Value& held) try {
  return held.Type() == VT_BOOL ? kNobody : held.OrEmpty().ToInt32();
} catch (const Error&) {
  return kNobody;
}

// The user who works as an employee; nobody if there is none who may log in.
std::int32_t UserOfEmployee(std::int32_t employee) {
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  const Text sql = L"select FUserID from t_User where FEmpID=" + std::to_wstring(employee) + L" and FForbidden <> 1";
  const RecordSet users(classInfo.Call(L"GetData", GetPropsString(), sql));
  return users.EndReached() ? kNobody : IdIn(users.Field(L"FUserID"));
}

// Unset if it is no package, which identifies nobody either.
Dictionary RecordIn(const Value& held) try { return Dictionary(held); } catch (const Error&) {
  return {};
}

// The user that a header field holds: an ID, or a looked-up user or employee.
std::int32_t UserOf(const Value& held) {
  if (!held.IsObject()) return IdIn(held);
  const auto record = RecordIn(held);
  if (!record) return kNobody;
  const auto user = IdIn(*record.GetValue(L"FUserID"_key));
  if (user != kNobody) return user;
  const auto employee = IdIn(*record.GetValue(L"FEmpID"_key));
  return employee == kNobody ? kNobody : UserOfEmployee(employee);
}

}  // namespace

void AddVariableUsers(const Dictionary& recipients, const Dictionary& variableUsers, const Dictionary& page,
                      const Dictionary& package) {
  for (const auto& field : Entries(variableUsers)) {
    const auto user = UserOf(*page.GetValue(Key(field.KeyView())));
    if (user != kNobody) AddRecipient(recipients, user, package);
  }
}

}  // namespace tavio
