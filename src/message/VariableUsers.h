#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// Adds the users whom a bill's header fields name to its recipients. `page` is the bill's header page, `package` the
// message. Raises Error.
void AddVariableUsers(const Dictionary& recipients, const Dictionary& variableUsers, const Dictionary& page,
                      const Dictionary& package);

}  // namespace tavio
