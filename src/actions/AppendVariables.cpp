#include "actions/BillActions.h"
#include "foundation/environment/Operation.h"

namespace tavio {

bool BillActions::AddAppendVariables(const Dictionary& variables) noexcept {
  Operation({.log = L"TavioClassBillAction.BillActions.AddAppendVariables",
             .report = L"TavioClassBillAction.BillActions : AddAppendVariables"},
            [&] {
              if (!variables || variables.Count() == 0) return;
              if (!appendVariables_) appendVariables_ = Dictionary::New();
              const auto count = variables.Count();
              for (std::int32_t i = 1; i <= count; ++i) {
                const auto entry = variables.At(i);
                if (!entry.value->IsObject()) throw Error::TypeMismatch();
                appendVariables_.Set(entry.BorrowKey(), *entry.value);
              }
            });
  return false;  // hosts have learnt not to look at it
}

}  // namespace tavio
