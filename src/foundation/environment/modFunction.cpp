#include "foundation/environment/modFunction.h"

#include "foundation/values/Error.h"
#include "foundation/values/MParse.h"
#include "foundation/values/Text.h"
#include "foundation/values/Value.h"

namespace tavio {
namespace {

Error PropertyError(TextView what, TextView name) { return Error::System(E_INVALIDARG, what, name); }

}  // namespace

PropertyTable PropertyTable::ParseProps(TextView props) {
  PropertyTable table;
  for (const auto& [name, value] : ParsePairs(props)) {
    const bool added = table.values_.try_emplace(ToUpper(name), value).second;
    if (!added) throw PropertyError(L"共享属性重复", name);
  }
  return table;
}

const Text& PropertyTable::GetProp(TextView name) const {
  const auto found = values_.find(ToUpper(name));
  if (found == values_.end()) throw PropertyError(L"缺少共享属性", name);
  return found->second;
}

std::int32_t PropertyTable::GetCurrentUserID() const { return Value(TextView(GetProp(L"UserID"))).ToInt32(); }

}  // namespace tavio
