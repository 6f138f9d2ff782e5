#include "containers/VectorObject.h"

#include "com/server/ErrorInformation.h"
#include "containers/Enumerator.h"

namespace tavio::vexo {

STDMETHODIMP VectorObject::get_Count(LONG* result) {
  return com::Answer(result, [&] { *result = Count(); });
}

STDMETHODIMP VectorObject::get_LBound(LONG* result) {
  return com::Answer(result, [&] { *result = 1; });
}

STDMETHODIMP VectorObject::get_UBound(LONG* result) { return get_Count(result); }

STDMETHODIMP VectorObject::Add(VARIANT item, LONG* result) {
  return com::Answer(result, [&] {
    items_.push_back(Value::CopyOf(item));
    *result = Count();
  });
}

STDMETHODIMP VectorObject::get_Item(LONG index, VARIANT* result) {
  const auto* item = At(index);
  const HRESULT answered = com::Answer(result, [&] {
    if (item) Check(VariantCopy(result, const_cast<VARIANT*>(item)));  // only read
  });
  if (item || FAILED(answered)) return answered;
  return com::Guarded([] { return com::Raise(__uuidof(_Vector), DISP_E_BADINDEX, L"Vexo.Vector", L"下标越界"); });
}

STDMETHODIMP VectorObject::get__NewEnum(IUnknown** result) {
  return com::Answer(result, [&] {
    Enumerator::Items items;
    items.reserve(items_.size());
    for (const auto& item : items_) items.push_back(item.Copy());
    *result = Enumerator::Over(std::move(items));
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
