#pragma once

#include "foundation/values/Value.h"

namespace tavio {

// A value as a container holds it: read in place if the container allows it, a copy otherwise. It holds until the
// container is changed, which any call into foreign code may do: take what is needed first, then call.
class StoredValue {
 public:
  explicit StoredValue(Value copy) noexcept : copy_(std::move(copy)) {}
  explicit StoredValue(const VARIANT& inPlace) noexcept : inPlace_(&inPlace) {}

  const Value& operator*() const noexcept { return inPlace_ ? Value::In(*inPlace_) : copy_; }
  const Value* operator->() const noexcept { return &**this; }
  bool IsInPlace() const noexcept { return inPlace_ != nullptr; }

 private:
  const VARIANT* inPlace_ = nullptr;
  Value copy_;
};

}  // namespace tavio
