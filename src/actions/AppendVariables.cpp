#include "actions/BillActions.h"
#include "foundation/environment/Operation.h"
#include "foundation/packages/Walk.h"

namespace tavio {

bool BillActions::AddAppendVariables(const Dictionary& variables) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.AddAppendVariables",
                           .report = L"TavioClassBillAction.BillActions : AddAppendVariables"};
  Operation(kLabels, [&] {
    if (!variables || variables.Count() == 0) return;
    if (!appendVariables_) appendVariables_ = Dictionary::New();
    const auto held = appendVariables_;
    for (const auto& entry : Entries(variables)) {
      if (!entry.Stored().IsObject()) throw Error::TypeMismatch();
      held.Set(entry.BorrowKey(), entry.Stored());
    }
  });
  return false;  // hosts have learnt not to look at it
}

}  // namespace tavio
