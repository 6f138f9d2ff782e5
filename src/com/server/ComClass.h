#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com/server/ComObject.h"
#include "com/server/Dispatch.h"
#include "foundation/values/Error.h"

namespace tavio::com {

// Identity, lifetime and dispatch of a class with one dual interface. `Main` is the interface that is implemented: the
// dual one itself, or a private one derived from it.
template <class Dual, class Main = Dual>
class ComClass : public ComObject<Main, ISupportErrorInfo> {
 public:
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override { return iid == __uuidof(Dual) ? S_OK : S_FALSE; }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    return index == 0 ? Dispatch::For(__uuidof(Dual)).GetTypeInfo(info) : DISP_E_BADINDEX;
  }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    return Dispatch::For(__uuidof(Dual)).GetIDsOfNames(names, count, ids);
  }
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* info,
                      UINT* wrongArgument) override {
    const Microsoft::WRL::ComPtr<Dual> held(this);  // reading the arguments, too, can run code that lets it go
    return Dispatch::For(__uuidof(Dual))
        .Invoke(static_cast<Dual*>(this), member, flags, arguments, result, info, wrongArgument);
  }
};

// A failure without a description. Clears the thread's error information, or that of an earlier one would be taken for
// this failure's.
inline HRESULT Undescribed(HRESULT number) noexcept {
  SetErrorInfo(0, nullptr);
  return number;
}

// Runs a member whose failures need no description. No exception leaves it.
template <class Body>
HRESULT Guarded(Body&& body) noexcept try {
  return body();
} catch (...) {
  return Undescribed(Translate().Number());
}

// The same for a member with a result, which `body` sets, and which is empty if it fails before.
template <class Result, class Body>
HRESULT Answer(Result* result, Body&& body) noexcept {
  if (!result) return Undescribed(E_POINTER);
  *result = Result{};
  return Guarded([&] {
    body();
    return S_OK;
  });
}

// The maker of a class for its row in the class table.
template <class Class>
HRESULT Make(REFIID iid, void** object) noexcept {
  return Guarded([&] {
    auto* made = new Class;
    const HRESULT result = made->QueryInterface(iid, object);
    made->Release();
    return result;
  });
}

}  // namespace tavio::com
