#include "companion/preview/People.h"

#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/RecordSet.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/DecimalText.h"
#include "foundation/values/Error.h"

namespace tavio::companion {
namespace {

constexpr std::size_t kAtOnce = 300;

Text TextIn(const RecordSet& rows, const wchar_t* field) {
  Text text;
  rows.Field(field).AppendTo(text);
  return text;
}

// As the library's own SQL sees it ("<> 1"), for which a flag of another number forbids nothing, and no flag does.
bool Forbids(const Value& flag) {
  if (flag.Type() == VT_BOOL) return flag.ToBool();
  return flag.IsNull() || flag.ToInt32() == 1;
}

void ReadId(Listed& listed, const Value& held) {
  try {
    listed.id = held.ToInt32();
  } catch (const Error&) {
    listed.isNumber = false;
  }
}

Listed ListedAs(TextView key, const Dictionary& entry) {
  Listed listed{Text(key)};
  if (entry) {
    Text type;
    entry.GetValue(L"FUserType"_key)->AppendTo(type);
    if (!type.empty()) listed.type = type;
    const auto id = entry.Find(L"FUserID"_key);
    if (id && !(*id)->IsNull() && !(*id)->EqualsText(L"")) {
      ReadId(listed, **id);
      return listed;
    }
  }
  ReadId(listed, Value(key));
  return listed;
}

}  // namespace

void Users::Ask(const std::set<std::int32_t>& ids) {
  Text some;
  std::size_t count = 0;
  for (const auto id : ids) {
    if (!asked_.insert(id).second) continue;
    some += (some.empty() ? L"" : L",") + std::to_wstring(id);
    if (++count % kAtOnce == 0) AskSome(std::exchange(some, {}));
  }
  if (!some.empty()) AskSome(some);
}

void Users::AskSome(const Text& ids) try {
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  const Text sql =
      L"SELECT a.FUserID, a.FName, a.FForbidden, b.FMobilePhone FROM t_User a "
      L"LEFT OUTER JOIN t_Emp b ON b.FItemID = a.FEmpID WHERE a.FUserID IN (" +
      ids + L")";
  for (const RecordSet rows(classInfo.Call(L"GetData", GetPropsString(), sql)); !rows.EndReached(); rows.MoveNext()) {
    users_[rows.Field(L"FUserID").ToInt32()] = {TextIn(rows, L"FName"), Forbids(rows.Field(L"FForbidden")),
                                                TextIn(rows, L"FMobilePhone")};
  }
} catch (const Error&) {
  known_ = false;
}

const Users::User* Users::Find(std::int32_t id) const {
  const auto found = users_.find(id);
  return found == users_.end() ? nullptr : &found->second;
}

std::vector<Listed> ListedIn(const Dictionary& list, bool typed) {
  std::vector<Listed> listed;
  if (!list) return listed;
  for (const auto& recipient : Entries(list)) {
    const bool hasEntry = typed && recipient.Stored().HoldsObject();
    listed.push_back(ListedAs(recipient.KeyView(), hasEntry ? recipient.Record() : Dictionary()));
  }
  return listed;
}

std::vector<Text> Joining::Add(const Text& address) {
  const Text upper = ToUpper(address);
  const auto before = list_.Joined().size();
  list_.Add(address, upper);
  if (list_.Joined().size() != before) {
    upper_ += ToUpper(list_.Joined().substr(before));
    return {};
  }
  const auto begin = upper_.find(upper);
  if (address.empty() || begin == Text::npos) return {};
  const auto first = upper_.rfind(separator_, begin);
  const auto last = upper_.find(separator_, begin + upper.size());
  const auto from = first == Text::npos ? 0 : first + 1;
  std::vector<Text> within;
  for (const auto part : SplitAddresses(TextView(list_.Joined()).substr(from, last - from), separator_)) {
    within.emplace_back(part);
  }
  return within;
}

}  // namespace tavio::companion
