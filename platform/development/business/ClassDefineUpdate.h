#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioMClass.ClassDefineUpdate: storing what a designer changed.
//   SaveBillActions(properties, class type ID, actions, class type)   the last three by reference; afterwards `actions`
//                                                                     is a new package: the collection as it is stored
// What is stored and what is refused: BillActionTable.
class ClassDefineUpdate final : public PlatformObject {
 public:
  ClassDefineUpdate();

 private:
  void SaveBillActions(const Arguments& arguments);
};

}  // namespace tavio::development
