#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// The mobile numbers for a notice about a bill in multi-level approval, joined by ",", each once: of those recipients
// whom the platform says must be told and who may log in. Empty if there is nobody. Raises Error if an ID is no 32-bit
// number or the platform cannot answer.
Text NumbersToNotify(const Dictionary& recipients, std::int32_t billId);

}  // namespace tavio
