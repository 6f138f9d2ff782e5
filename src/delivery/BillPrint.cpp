#include "delivery/BillPrint.h"

#include "foundation/environment/Operation.h"
#include "foundation/environment/SharedProperties.h"

namespace tavio {

Text PrintBill(const PrintedBill& bill) noexcept {
  return Operation<Text>({}, [&](Text& path) {
    const auto print = Component::Create(L"TavioClassBillPrint.clsNotePrint");
    print.Assign(L"dataSrv", Value(bill.dataService.Object()));
    print.Assign(L"TableInfo", bill.tableInfo.AsValue());
    // The file is named after the business object. The path comes back in the name's place.
    Text name = bill.objectTemplate.GetValue(Key(TextView(L"FName_" + GetPropValue(L"Language"))))->ToText();
    auto id = bill.billId;
    if (print.Call(L"CreatePDFFile", ByRef(name), ByRef(id), GetPropsString()).ToBool()) path = name;
  });
}

}  // namespace tavio
