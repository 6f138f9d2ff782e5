#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>

#include "foundation/values/NoWindowsMacros.h"
#include "foundation/values/Text.h"

namespace tavio {

// The property table of a shared-properties string. Names are matched without regard to letter case.
class PropertyTable {
 public:
  // Raises Error if a name occurs twice.
  static PropertyTable ParseProps(TextView props);

  // Raises Error if the name is absent.
  const Text& GetProp(TextView name) const;
  // "UserID" as a number; raises Error if it is absent or none.
  std::int32_t GetCurrentUserID() const;

 private:
  std::map<Text, Text> values_;  // by upper-cased name
};

template <class T>
bool IsInList(const T& value, std::span<const T> list) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

}  // namespace tavio
