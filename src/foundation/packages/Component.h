#pragma once

#include <array>
#include <concepts>
#include <tuple>
#include <utility>

#include "foundation/packages/Vector.h"
#include "foundation/values/InvokeByName.h"

namespace tavio {

// An argument that the component may change. It goes out typed (VT_BYREF with the type of `target`); what comes back is
// stored in `target` after the call, and raises a type mismatch if a package comes back as something else.
template <class T>
class ByRefArgument {
 public:
  explicit ByRefArgument(T& target) : target_(target), held_(AsValue(target)) {}

  VARIANT Raw() noexcept {
    VARIANT raw;
    VariantInit(&raw);
    raw.vt = static_cast<VARTYPE>(VT_BYREF | held_.Type());
    raw.byref = &held_.InPlace()->byref;  // the place of every typed member
    return raw;
  }
  void TakeBack() {
    if constexpr (std::same_as<T, std::int32_t>) {
      target_ = held_.ToInt32();
    } else if constexpr (std::same_as<T, bool>) {
      target_ = held_.ToBool();
    } else if constexpr (std::same_as<T, Text>) {
      target_ = held_.ToText();
    } else if constexpr (std::same_as<T, Value>) {
      target_ = std::move(held_);
    } else {
      if (held_.Raw().pdispVal != target_.Object().Get()) target_ = T(held_);
    }
  }

 private:
  static Value AsValue(T& target) {
    if constexpr (std::same_as<T, Value>) {
      return std::move(target);
    } else if constexpr (std::constructible_from<Value, T>) {
      return Value(target);
    } else {
      return target.AsValue();
    }
  }

  T& target_;
  Value held_;
};

// An argument that is only read.
class InArgument {
 public:
  explicit InArgument(Value held) noexcept : held_(std::move(held)) {}
  VARIANT Raw() const noexcept { return held_.Raw(); }
  void TakeBack() const noexcept {}

 private:
  Value held_;
};

template <class T>
ByRefArgument<T> ByRef(T& target) {
  return ByRefArgument<T>(target);
}

template <class T>
ByRefArgument<T> AsArgument(ByRefArgument<T>&& argument) {
  return std::move(argument);
}
inline InArgument AsArgument(Value&& value) { return InArgument(std::move(value)); }
inline InArgument AsArgument(const Value& value) { return InArgument(value.Copy()); }
inline InArgument AsArgument(const Dictionary& record) { return InArgument(record.AsValue()); }
inline InArgument AsArgument(const Vector& list) { return InArgument(list.AsValue()); }
inline InArgument AsArgument(const Text& text) { return InArgument(Value(TextView(text))); }
template <class T>
requires std::constructible_from<Value, const T&> &&(!std::same_as<std::remove_cvref_t<T>, Value>)InArgument
    AsArgument(const T& scalar) {
  return InArgument(Value(scalar));
}

// A component of the platform, called by member name and released with the last handle. Arguments stand in source
// order. A failed call raises Error with the component's own number, source and description.
class Component {
 public:
  explicit Component(ComPtr<IDispatch> object) noexcept : object_(std::move(object)) {}
  // Raises Error if no such component can be created.
  static Component Create(const wchar_t* progId);

  const ComPtr<IDispatch>& Object() const noexcept { return object_; }

  template <class... Arguments>
  Value Call(const wchar_t* member, Arguments&&... arguments) const {
    auto adapted = std::tuple{AsArgument(std::forward<Arguments>(arguments))...};
    return std::apply(
        [&](auto&... argument) {
          std::array<VARIANT, sizeof...(Arguments)> raw = {argument.Raw()...};
          std::reverse(raw.begin(), raw.end());
          Value result = InvokeByName(Set(), member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, raw);
          (argument.TakeBack(), ...);
          return result;
        },
        adapted);
  }
  Value Read(const wchar_t* property) const { return InvokeByName(Set(), property, DISPATCH_PROPERTYGET, {}); }
  // Assigns a scalar, or an object by reference.
  void Assign(const wchar_t* property, const Value& value) const;

 private:
  IDispatch* Set() const;

  ComPtr<IDispatch> object_;
};

}  // namespace tavio
