#include "delivery/BillPrint.h"

#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Fields.h"

namespace tavio {

Text PrintBill(const PrintedBill& bill) noexcept {
  return Operation<Text>({}, [&](Text& path) {
    const auto print = Component::Create(L"TavioClassBillPrint.clsNotePrint");
    print.Assign(L"dataSrv", Value(bill.dataService.Object()));
    print.Assign(L"TableInfo", bill.tableInfo.AsValue());
    // The file is named after the business object. The path comes back in the name's place; a name that stays is none.
    const auto name = TextAt(bill.objectTemplate, Key(TextView(L"FName_" + GetPropValue(L"Language"))));
    auto given = name;
    auto id = bill.billId;
    const bool made = print.Call(L"CreatePDFFile", ByRef(given), ByRef(id), GetPropsString()).ToBool();
    if (made && given != name) path = given;
  });
}

}  // namespace tavio
