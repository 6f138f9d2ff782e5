#include "containers/VectorObject.h"

#include "com/server/ErrorInformation.h"
#include "containers/Enumerator.h"

namespace tavio::vexo {

STDMETHODIMP VectorObject::get_Count(LONG* result) {
  if (!result) return E_POINTER;
  *result = static_cast<LONG>(items_.size());
  return S_OK;
}

STDMETHODIMP VectorObject::get_LBound(LONG* result) {
  if (!result) return E_POINTER;
  *result = 1;
  return S_OK;
}

STDMETHODIMP VectorObject::get_UBound(LONG* result) { return get_Count(result); }

STDMETHODIMP VectorObject::Add(VARIANT item, LONG* result) {
  if (!result) return E_POINTER;
  return com::Guarded([&] {
    items_.push_back(Value::CopyOf(item));
    return get_Count(result);
  });
}

STDMETHODIMP VectorObject::get_Item(LONG index, VARIANT* result) {
  if (!result) return E_POINTER;
  VariantInit(result);
  const auto* item = At(index);
  if (!item) return com::Raise(__uuidof(_Vector), DISP_E_BADINDEX, L"Vexo.Vector", L"下标越界");
  return VariantCopy(result, const_cast<VARIANT*>(item));  // only read
}

STDMETHODIMP VectorObject::get__NewEnum(IUnknown** result) {
  if (!result) return E_POINTER;
  *result = nullptr;
  return com::Guarded([&] {
    Enumerator::Items items;
    items.reserve(items_.size());
    for (const auto& item : items_) items.push_back(item.Copy());
    return Enumerator::HandOut(std::move(items), result);
  });
}

STDMETHODIMP VectorObject::ReadItem(LONG index, const VARIANT** value) {
  *value = At(index);
  return *value ? S_OK : S_FALSE;
}

const VARIANT* VectorObject::At(LONG index) const noexcept {
  const bool inside = index >= 1 && static_cast<std::size_t>(index) <= items_.size();
  return inside ? &items_[static_cast<std::size_t>(index - 1)].Raw() : nullptr;
}

}  // namespace tavio::vexo
