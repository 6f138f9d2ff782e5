#pragma once

#include "foundation/packages/Dictionary.h"

struct _Vector;
struct IVectorInPlace;

namespace tavio {

// A handle on a list of values, positions from 1, shared by reference. As Dictionary in everything else.
class Vector : public ContainerHandle<_Vector, IVectorInPlace> {
 public:
  Vector() noexcept = default;
  explicit Vector(const ComPtr<IDispatch>& object);
  explicit Vector(const Value& value) : Vector(value.ToObject()) {}
  static Vector New();

  std::int32_t Count() const;
  void Add(const Value& item) const;
  void Add(const Dictionary& record) const { Add(record.AsValue()); }
  StoredValue Item(std::int32_t position) const;
  // The item as a record; type mismatch if it is none.
  Dictionary Record(std::int32_t position) const { return Dictionary(*Item(position)); }
};

}  // namespace tavio
