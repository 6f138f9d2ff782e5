#pragma once

#include <windows.h>
#include <oaidl.h>

#include <new>

#include "com/server/Dispatch.h"
#include "com/server/Module.h"

namespace tavio::com {

// Identity, lifetime and dispatch of a class with one dual interface. `Main` is the interface that is implemented: the
// dual one itself, or one derived from it under the private identifier `mainId`.
template <class Dual, class Main = Dual>
class ComClass : public Main, public ISupportErrorInfo {
 public:
  ComClass(const ComClass&) = delete;
  ComClass& operator=(const ComClass&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == mainId_ || iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Dual)) {
      *object = static_cast<Main*>(this);
    } else if (iid == IID_ISupportErrorInfo) {
      *object = static_cast<ISupportErrorInfo*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) {
      references_ = 1;  // who is called while this ends may take and release it once more
      delete this;
    }
    return left;
  }

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
    return Dispatch::For(__uuidof(Dual))
        .Invoke(static_cast<Dual*>(this), member, flags, arguments, result, info, wrongArgument);
  }

 protected:
  explicit ComClass(const IID& mainId = __uuidof(Dual)) noexcept : mainId_(mainId) { HoldModule(); }
  virtual ~ComClass() { LetModuleGo(); }

 private:
  const IID& mainId_;
  ULONG references_ = 1;  // objects stay in their apartment, so nobody else counts
};

// The maker of a class for its row in the class table.
template <class Class>
HRESULT Make(REFIID iid, void** object) noexcept try {
  auto* made = new Class;
  const HRESULT result = made->QueryInterface(iid, object);
  made->Release();
  return result;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

}  // namespace tavio::com
