#pragma once

#include <new>

#include "foundation/Value.h"

// What both container classes do with values. The containers know no platform, so failures stay plain HRESULTs here.
namespace tavio::vexo {

// A copy with every reference followed. Throws std::bad_alloc, or answers the failure.
inline HRESULT CopyInto(Value& target, const VARIANT& source) {
  return VariantCopyInd(target.Receive(), const_cast<VARIANT*>(&source));  // only read
}

// The copy of a stored value, which always can be made while there is memory.
inline Value CopyOfStored(const Value& stored) {
  Value copy;
  if (FAILED(VariantCopy(copy.Receive(), const_cast<VARIANT*>(&stored.Raw())))) throw std::bad_alloc();
  return copy;
}

// Runs a member that may allocate.
template <class Body>
HRESULT Guarded(Body&& body) noexcept try {
  return body();
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

}  // namespace tavio::vexo
