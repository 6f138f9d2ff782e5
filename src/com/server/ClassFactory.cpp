#include "com/server/ClassFactory.h"

namespace tavio::com {

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
