#include "development/business/MultiCheckInfo.h"

#include "development/storage/RecordSet.h"
#include "foundation/values/Error.h"

namespace tavio::development {

MultiCheckInfo::MultiCheckInfo() {
  Add(L"GetUsers", [this](Arguments& a) {
    if (a.At(0).ToText().empty()) throw Error(E_INVALIDARG, L"TavioMBOSMultiCheck.BillInfo", L"连接字符串为空");
    return Value(MakeRecordSet(Store().Query(L"SELECT FUserID, FName FROM t_User ORDER BY FUserID")));
  });
}

}  // namespace tavio::development
