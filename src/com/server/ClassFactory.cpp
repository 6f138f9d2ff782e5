#include "com/server/ClassFactory.h"

#include "com/server/Module.h"

namespace tavio::com {

ClassFactory::ClassFactory(const ClassRow& row) noexcept : row_(row) { HoldModule(); }
ClassFactory::~ClassFactory() { LetModuleGo(); }

STDMETHODIMP ClassFactory::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  const bool known = iid == IID_IUnknown || iid == IID_IClassFactory;
  *object = known ? this : nullptr;
  if (known) AddRef();
  return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) ClassFactory::AddRef() { return ++references_; }

STDMETHODIMP_(ULONG) ClassFactory::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  return outer ? CLASS_E_NOAGGREGATION : row_.make(iid, object);
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock) {
  lock ? HoldModule() : LetModuleGo();
  return S_OK;
}

}  // namespace tavio::com
