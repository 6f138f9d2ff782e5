#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// The variables of a message, keyed by name, as entries of FName, FCaption and, once it is known, FValue. Everything
// raises Error; what was listed before stays.

// Lists the header fields of a field information that are stored and visible.
void ListVariables(const Dictionary& tableInfo, const Dictionary& variables);
// Lists the stored header fields that hold a user.
void ListVariableUsers(const Dictionary& tableInfo, const Dictionary& variableUsers);

// Whether a host's package has what a variable needs.
bool IsVariable(const Dictionary& variable);
// Adds a variable as the host describes it, with an empty value if there is none, or replaces that of its name.
void StoreVariable(const Dictionary& variables, const Dictionary& variable);

}  // namespace tavio
