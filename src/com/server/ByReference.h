#pragma once

#include <windows.h>
#include <oaidl.h>

#include "foundation/values/Value.h"

namespace tavio::com {

// What an argument stands for: itself or, if it is a variable (VT_BYREF|VT_VARIANT), what that holds now, which may be a
// reference again. Null if it refers to nothing.
const VARIANT* Behind(const VARIANT* argument) noexcept;

// Puts `value` where a by-reference argument leads: a variable takes it as it is, any other place converted to its type,
// or not at all if it cannot be. What was there is let go when the new value stands. An argument by value, and a
// reference to nothing, is left alone.
HRESULT StoreInto(const VARIANT& argument, const Value& value) noexcept;

// Whether both are of one type and hold the same: the same text, the same object.
bool Same(const Value& a, const Value& b) noexcept;

}  // namespace tavio::com
