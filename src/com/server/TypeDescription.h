#pragma once

#include <windows.h>
#include <oaidl.h>
#include <wrl/client.h>

#include "foundation/values/SystemHandle.h"

namespace tavio::com {

// What a type library describes something with. Its owner, which lends it, is held until it has been given back.
template <class Owner, class Description, auto GiveBack>
struct DescriptionKind {
  struct Handle {
    Microsoft::WRL::ComPtr<Owner> owner;
    Description* lent = nullptr;

    Description* operator->() const noexcept { return lent; }
    bool operator==(const Handle& other) const noexcept { return lent == other.lent; }
  };
  static Handle None() noexcept { return {}; }
  static void Close(const Handle& handle) noexcept { (handle.owner.Get()->*GiveBack)(handle.lent); }
};
using FunctionDescription = SystemHandle<DescriptionKind<ITypeInfo, FUNCDESC, &ITypeInfo::ReleaseFuncDesc>>;
using LibraryDescription = SystemHandle<DescriptionKind<ITypeLib, TLIBATTR, &ITypeLib::ReleaseTLibAttr>>;

// Unset if there is no function at that place.
inline FunctionDescription FunctionAt(ITypeInfo* info, UINT index) noexcept {
  FUNCDESC* function = nullptr;
  if (FAILED(info->GetFuncDesc(index, &function))) return {};
  return FunctionDescription({info, function});
}

}  // namespace tavio::com
