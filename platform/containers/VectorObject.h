#pragma once

#include <vector>

#include "com/server/ComClass.h"
#include "containers/ReadInPlace.h"
#include "foundation/values/Value.h"

template <>
struct tavio::com::Identity<IVectorInPlace> {
  static bool Is(REFIID iid) noexcept { return iid == IID_IVectorInPlace || Identity<_Vector>::Is(iid); }
};

namespace tavio::vexo {

// A list of values, positions from 1 to Count. Objects are stored by reference. Item of a position that is not there
// fails with DISP_E_BADINDEX. "For Each" walks the items that there were at its beginning.
class VectorObject final : public com::ComClass<_Vector, IVectorInPlace> {
 public:
  VectorObject() noexcept = default;
  // What is let go may call back a last time, and meets an empty list.
  ~VectorObject() override { const auto last = std::exchange(items_, {}); }

  STDMETHODIMP get_Count(LONG* result) override;
  STDMETHODIMP get_LBound(LONG* result) override;
  STDMETHODIMP get_UBound(LONG* result) override;
  STDMETHODIMP Add(VARIANT item, LONG* result) override;
  STDMETHODIMP get_Item(LONG index, VARIANT* result) override;
  STDMETHODIMP get__NewEnum(IUnknown** result) override;

  STDMETHODIMP ReadItem(LONG index, const VARIANT** value) override;

 private:
  LONG Count() const noexcept { return static_cast<LONG>(items_.size()); }
  const VARIANT* At(LONG index) const noexcept;

  std::vector<Value> items_;
};

}  // namespace tavio::vexo
