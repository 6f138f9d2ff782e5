#pragma once

#include <windows.h>
#include <unknwn.h>

#include <concepts>

#include "com/server/ModuleUse.h"

namespace tavio::com {

// Whether an object that implements `Interface` answers for the identifier. Specialised for an interface that goes by
// more identifiers than its own.
template <class Interface>
struct Identity {
  static bool Is(REFIID iid) noexcept { return iid == __uuidof(Interface); }
};

// An interface that is dual goes by that of IDispatch too.
template <class Interface>
requires std::derived_from<Interface, IDispatch> &&(!std::same_as<Interface, IDispatch>)struct Identity<Interface> {
  static bool Is(REFIID iid) noexcept { return iid == __uuidof(Interface) || iid == IID_IDispatch; }
};

// Identity and lifetime of an object: it keeps its server loaded, starts with one reference and ends with the last. The
// first interface stands for its identity. Objects stay in their apartment, so nobody else counts meanwhile.
template <class First, class... Others>
class ComObject : public First, public Others... {
 public:
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || Identity<First>::Is(iid)) {
      *object = static_cast<First*>(this);
    } else {
      static_cast<void>((Offer<Others>(iid, object) || ...));
    }
    if (!*object) return E_NOINTERFACE;
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

 protected:
  ComObject() noexcept { HoldModule(); }
  virtual ~ComObject() { LetModuleGo(); }

 private:
  template <class Interface>
  bool Offer(REFIID iid, void** object) noexcept {
    if (!Identity<Interface>::Is(iid)) return false;
    *object = static_cast<Interface*>(this);
    return true;
  }

  ULONG references_ = 1;
};

}  // namespace tavio::com
