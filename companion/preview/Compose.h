#pragma once

#include "foundation/packages/Component.h"

namespace tavio::companion {

// The platform's class information, with what hosts ask of it. Raises Error that names a member which the platform does
// not have, and what there is instead of an unknown bill type or bill.
class Templates {
 public:
  Templates();

  Dictionary ClassType(std::int32_t type) const;
  Dictionary TableInfo(std::int32_t type) const;
  Vector Entries(std::int32_t type) const;
  Dictionary Bill(std::int32_t type, std::int32_t bill) const;

 private:
  template <class... Arguments>
  Value Ask(const wchar_t* member, const Arguments&... arguments) const;

  Text props_;
  Component classInfo_;
};

// A message object of the library with everything that it needs to be sent.
struct Composed {
  Component message;
  Dictionary bill;
  Dictionary tableInfo;
  Text heading;  // "采购申请单 1005, MultiCheck, 8 审核, 单据 5001"
};

// The message of an action in a scenario, which is a mask or a name. Raises Error that names what is unknown, and what
// there is instead.
Composed Compose(std::int32_t type, const Text& action, const Value& scenario, std::int32_t bill);

// The action collection of a bill type, loaded by the library; raises what it would have shown.
Component LoadedActions(std::int32_t type);

}  // namespace tavio::companion
