#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioSharedProps.PropStore: the shared client properties, in t_SharedProperty. One set serves every process.
//   GetProperty(process, name)   "PropsString" answers all of them as "Name=Value;" pairs in their order; any other
//                                name its value, or empty if there is none
//   SetProperty(name, value)     changes or adds one; a value that holds ";" must stand in braces
class PropStore final : public PlatformObject {
 public:
  PropStore();

 private:
  Value GetProperty(const Text& name);
  void SetProperty(const Text& name, const Text& value);
  Text PropsString();
};

}  // namespace tavio::development
