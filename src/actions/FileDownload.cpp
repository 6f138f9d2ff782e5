#include "actions/BillActions.h"
#include "actions/TemporaryFolder.h"
#include "foundation/environment/Operation.h"

namespace tavio {

Text BillActions::DownloadFile(const Value& bytes, TextView fileName) const noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.DownloadFile"};
  return Operation<Text>(kLabels, [&](Text& path) {
    const Text target = PrepareTemporaryFolder() + L"\\" + Text(fileName);
    WriteFileBytes(target, bytes);
    path = target;
  });
}

}  // namespace tavio
