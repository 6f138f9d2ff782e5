#pragma once

#include <span>

#include "foundation/values/Value.h"

namespace tavio {

// Calls a member of `object` by its name, as a script does. `flags` are the DISPATCH_ flags; `arguments` stand in
// reverse order, as IDispatch takes them. A failed call raises Error with the component's own number, source and
// description.
Value InvokeByName(IDispatch* object, const wchar_t* name, WORD flags, std::span<VARIANT> arguments);

// Whether `object` has a member of that name.
bool HasMember(IDispatch* object, const wchar_t* name) noexcept;

}  // namespace tavio
