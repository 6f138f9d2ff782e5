#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioMClass.ClassInfo: everything that is read about business objects. The first argument of every member is the
// shared-properties string, which must not be empty; an identifier may come by value or by reference.
//   GetBillActions(p, class type ID)      the action collection, a Dictionary keyed by FCode
//   getpredefineactions(p)                the catalogue, a Vector
//   GetBillEnvironments(p)                the scenarios, a Vector
//   GetClassMenu(p)                       the menu, a Dictionary keyed by FCode
//   GetData(p, sql)                       a record set (RecordSet.h); the text runs as it stands
//   GetClassType(p, class type ID)        the main template: FID, FBillTypeID, FNumber, FName_CHS, FName_ENU
//   GetTableInfo(p, class type ID)        the field information: each page a Dictionary whose keys are its fields,
//                                         and each field's record under its key
//   GetClassTypeEntry(p, class type ID)   the entry pages, a Vector
//   GetBillData(p, class type ID, bill)   a bill: FID, and the header's values by field under "Page1"
// An unknown business object or bill raises Error; only its actions are then an empty collection.
class ClassInfo final : public PlatformObject {
 public:
  ClassInfo();

 private:
  Value GetBillActions(const Arguments& arguments);
  Value GetBillEnvironments();
  Value GetClassMenu();
  Value GetData(const Arguments& arguments);
  Value GetClassType(const Arguments& arguments);
  Value GetTableInfo(const Arguments& arguments);
  Value GetClassTypeEntry(const Arguments& arguments);
  Value GetBillData(const Arguments& arguments);
};

}  // namespace tavio::development
