#pragma once

#include <span>

#include "foundation/values/Value.h"

namespace tavio {

inline constexpr WORD kCallOrRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

// Calls a member of `object` by its name, as a script does. `flags` are the DISPATCH_ flags; `arguments` stand in
// reverse order, as IDispatch takes them. A failed call raises Error with the component's own number, source and
// description. The object is held until the call ends.
Value InvokeByName(IDispatch* object, const wchar_t* name, WORD flags, std::span<VARIANT> arguments);

// The identifier of a member of `object`, for more calls than one; raises Error if there is no such member.
DISPID MemberOf(IDispatch* object, const wchar_t* name);
Value InvokeMember(IDispatch* object, DISPID member, WORD flags, std::span<VARIANT> arguments);

// Whether `object` has a member of that name.
bool HasMember(IDispatch* object, const wchar_t* name) noexcept;

}  // namespace tavio
