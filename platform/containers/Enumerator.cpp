#include "containers/Enumerator.h"

#include <algorithm>
#include <new>

namespace tavio::vexo {

STDMETHODIMP Enumerator::Next(ULONG wanted, VARIANT* items, ULONG* fetched) {
  if (fetched) *fetched = 0;
  if (!items || (!fetched && wanted != 1)) return E_POINTER;
  const ULONG given = static_cast<ULONG>(std::min<std::size_t>(wanted, Left()));
  for (ULONG i = 0; i < given; ++i) {
    VariantInit(&items[i]);
    const HRESULT copied = VariantCopy(&items[i], const_cast<VARIANT*>(&(*items_)[next_ + i].Raw()));
    if (SUCCEEDED(copied)) continue;
    while (i-- > 0) VariantClear(&items[i]);
    return copied;
  }
  next_ += given;
  if (fetched) *fetched = given;
  return given == wanted ? S_OK : S_FALSE;
}

STDMETHODIMP Enumerator::Skip(ULONG count) {
  const bool enough = count <= Left();
  next_ += std::min<std::size_t>(count, Left());
  return enough ? S_OK : S_FALSE;
}

STDMETHODIMP Enumerator::Reset() {
  next_ = 0;
  return S_OK;
}

STDMETHODIMP Enumerator::Clone(IEnumVARIANT** result) {
  if (!result) return E_POINTER;
  *result = new (std::nothrow) Enumerator(items_, next_);
  return *result ? S_OK : E_OUTOFMEMORY;
}

}  // namespace tavio::vexo
