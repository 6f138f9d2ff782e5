#pragma once

#include <utility>
#include <vector>

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioSharedProps.PropStore: the shared client properties, in t_SharedProperty. One set serves every process, but
// for ID and name of the user whom a process has for itself (CurrentUser.h).
//   GetProperty(process, name)   "PropsString" answers all of them as "Name=Value;" pairs in their order; any other
//                                name its value, or empty if there is none
//   SetProperty(name, value)     changes or adds one; a value that holds ";" must stand in braces. Refused for ID and
//                                name of such a user
class PropStore final : public PlatformObject {
 public:
  using Pairs = std::vector<std::pair<Text, Text>>;  // in their order

  PropStore();

 private:
  Pairs Properties();
  Value GetProperty(const Text& name);
  void SetProperty(const Text& name, const Text& value);
};

}  // namespace tavio::development
