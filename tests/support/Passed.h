#pragma once

#include "foundation/values/Value.h"

// The ways in which hosts pass an argument. What is passed must outlive the call.

namespace tavio::test {

inline VARIANT Reference(VARTYPE type, void* to) noexcept {
  VARIANT reference = {};
  reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
  reference.byref = to;
  return reference;
}

// As script hosts pass a variable.
inline VARIANT Variable(Value& value) noexcept { return Reference(VT_VARIANT, value.InPlace()); }

// As compiled hosts pass a variable that has a type.
inline VARIANT Typed(Value& value) noexcept { return Reference(value.Type(), &value.InPlace()->byref); }

// Whether a variable of that type can be declared.
inline bool IsDeclarable(VARTYPE type) noexcept { return type != VT_EMPTY && type != VT_NULL && type != VT_DECIMAL; }

}  // namespace tavio::test
