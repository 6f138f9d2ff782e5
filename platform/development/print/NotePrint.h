#pragma once

#include "development/storage/PlatformObject.h"
#include "foundation/packages/Dictionary.h"

namespace tavio::development {

// TavioClassBillPrint.clsNotePrint: printing a bill's header.
//   dataSrv     the host's data service; if it is a bill's data package, the values come from it
//   TableInfo   the field information, which gives the fields of "Page1" their captions
//   CreatePDFFile(name, bill ID, properties) -> Boolean
//               name and ID by reference. Writes a PDF into the folder "print" of the storage folder and leaves its
//               path in `name`. The values are those of dataSrv, else of the stored bill with that ID, else blank;
//               of several such bills the one whose object has that name, refused if that is not one.
//               Raises Error if no TableInfo was assigned.
class NotePrint final : public PlatformObject {
 public:
  NotePrint();

 private:
  Value CreatePdfFile(const Arguments& arguments);
  Dictionary HeaderOf(const Text& name, std::int32_t bill);
  Text ShownWithUser(const Value& held, const Dictionary& field);
  std::vector<Text> Lines(const Dictionary& header);

  Value dataService_;
  Value tableInfo_;
};

}  // namespace tavio::development
