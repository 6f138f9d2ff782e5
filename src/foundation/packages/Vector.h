#pragma once

#include "foundation/packages/Dictionary.h"

struct _Vector;

namespace tavio {

// A handle on a list of values, positions from 1, shared by reference. As Dictionary in everything else.
class Vector {
 public:
  Vector() noexcept = default;
  explicit Vector(ComPtr<IDispatch> object);
  explicit Vector(const Value& value) : Vector(value.ToObject()) {}
  static Vector New();

  explicit operator bool() const noexcept { return object_ != nullptr; }
  const ComPtr<IDispatch>& Object() const noexcept { return object_; }
  Value AsValue() const noexcept { return Value(object_); }

  std::int32_t Count() const;
  std::int32_t LBound() const;
  std::int32_t UBound() const;
  void Add(const Value& item) const;
  void Add(const Dictionary& record) const { Add(record.AsValue()); }
  StoredValue Item(std::int32_t position) const;
  // The item as a record; type mismatch where it is none.
  Dictionary Record(std::int32_t position) const { return Dictionary(*Item(position)); }

 private:
  enum class Road { kByName, kInterface, kLending };

  _Vector* Own() const;
  void CheckOwn(HRESULT result) const;

  ComPtr<IDispatch> object_;
  Road road_ = Road::kByName;
};

}  // namespace tavio
