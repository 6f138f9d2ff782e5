#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// Gives each variable its FValue from a bill's header page, which may be unset. A field without a known value loses the
// one it had; a variable of the host's own keeps it. Raises Error.
void FillVariables(const Dictionary& variables, const Dictionary& tableInfo, const Dictionary& page);

}  // namespace tavio
