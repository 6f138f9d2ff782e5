#include "com/server/ByReference.h"

#include <algorithm>
#include <cstring>

namespace tavio::com {
namespace {

// Of what a reference of that type leads to; 0 for types that are not stored so.
std::size_t SizeOf(VARTYPE type) noexcept {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    default:
      return 0;
  }
}

HRESULT StoreAs(VARTYPE type, void* place, const Value& value) noexcept {
  const std::size_t size = SizeOf(type);
  if (!size) return DISP_E_TYPEMISMATCH;
  Value held;
  const HRESULT converted = VariantChangeTypeEx(held.InPlace(), const_cast<VARIANT*>(&value.Raw()),  // only read
                                                LOCALE_USER_DEFAULT, VARIANT_ALPHABOOL, type);
  if (FAILED(converted)) return converted;
  auto* bytes = reinterpret_cast<std::byte*>(&held.InPlace()->byref);
  std::swap_ranges(bytes, bytes + size, static_cast<std::byte*>(place));
  return S_OK;
}

}  // namespace

const VARIANT* Behind(const VARIANT* argument) noexcept {
  if (argument && argument->vt == (VT_BYREF | VT_VARIANT)) argument = argument->pvarVal;
  return argument && argument->vt & VT_BYREF && !argument->byref ? nullptr : argument;
}

HRESULT StoreInto(const VARIANT& argument, const Value& value) noexcept {
  const VARIANT* target = Behind(&argument);
  if (!target) return S_OK;
  if (target->vt & VT_BYREF) return StoreAs(static_cast<VARTYPE>(target->vt & ~VT_BYREF), target->byref, value);
  if (target == &argument) return S_OK;
  Value held;
  const HRESULT copied = VariantCopyInd(held.InPlace(), const_cast<VARIANT*>(&value.Raw()));  // only read
  if (SUCCEEDED(copied)) std::swap(*held.InPlace(), *argument.pvarVal);
  return copied;
}

bool Same(const Value& a, const Value& b) noexcept {
  if (a.Type() != b.Type()) return false;
  if (a.IsText()) return ViewOf(a.Raw().bstrVal) == ViewOf(b.Raw().bstrVal);
  return std::memcmp(&a.Raw().byref, &b.Raw().byref, SizeOf(a.Type())) == 0;
}

}  // namespace tavio::com
