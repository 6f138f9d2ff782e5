#include <string>

#include "actions/BillActions.h"
#include "actions/TemporaryFolder.h"
#include "foundation/environment/Operation.h"

namespace tavio {

Text BillActions::DownloadFile(const Value& bytes, TextView fileName) const noexcept {
  return Operation<Text>({.log = L"TavioClassBillAction.BillActions.DownloadFile"}, [&](Text& path) {
    const TemporaryFolder folder;
    const Text target = folder.Path() + L"\\" + Text(fileName);
    WriteFileBytes(target, bytes);
    path = target;
  });
}

}  // namespace tavio
