#pragma once

#include <windows.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "foundation/values/BString.h"
#include "foundation/values/Text.h"

namespace tavio {

using Microsoft::WRL::ComPtr;

// An owned VARIANT: a scalar, a text, an object reference or an array. What it is made from decides the stored type
// (a 16-bit and a 32-bit integer are different stored types). Conversions are asked for by name and raise Error
// (overflow, type mismatch). Never holds a by-reference variant.
class Value {
 public:
  Value() noexcept { variant_.vt = VT_EMPTY; }
  template <std::same_as<bool> T>
  explicit Value(T flag) noexcept : Value() {
    variant_.vt = VT_BOOL;
    variant_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
  }
  template <std::same_as<std::int16_t> T>
  explicit Value(T number) noexcept : Value() {
    variant_.vt = VT_I2;
    variant_.iVal = number;
  }
  template <std::same_as<std::int32_t> T>
  explicit Value(T number) noexcept : Value() {
    variant_.vt = VT_I4;
    variant_.lVal = number;
  }
  template <std::same_as<float> T>
  explicit Value(T number) noexcept : Value() {
    variant_.vt = VT_R4;
    variant_.fltVal = number;
  }
  template <std::same_as<double> T>
  explicit Value(T number) noexcept : Value() {
    variant_.vt = VT_R8;
    variant_.dblVal = number;
  }
  explicit Value(TextView text) : Value(BString(text)) {}
  explicit Value(const wchar_t* text) : Value(TextView(text)) {}
  explicit Value(BString&& text) noexcept;
  // Shares the object; null is the unset reference, which is stored as such and not as an empty value.
  explicit Value(ComPtr<IDispatch> object) noexcept;

  Value(Value&& other) noexcept : variant_(other.Detach()) {}
  Value& operator=(Value&& other) noexcept {
    std::swap(variant_, other.variant_);
    return *this;
  }
  ~Value() { Clear(); }

  static Value Bytes(std::span<const std::byte> bytes);
  static Value Integers(std::span<const std::int32_t> integers);
  // An argument left out by the caller.
  static Value Missing() noexcept;
  // A database null.
  static Value Null() noexcept;
  // A copy of any variant, by-reference ones included.
  static Value CopyOf(const VARIANT& variant);
  // The same, or a missing argument if no copy can be made.
  static Value CopyOrMissing(const VARIANT& variant) noexcept;
  // A variant of somebody else's, read in place. Value adds nothing to the VARIANT it consists of.
  static const Value& In(const VARIANT& variant) noexcept { return reinterpret_cast<const Value&>(variant); }

  Value Copy() const { return CopyOf(variant_); }
  const VARIANT& Raw() const noexcept { return variant_; }
  // The place for a callee to put a result into; what was held is freed.
  VARIANT* Receive() noexcept {
    Clear();
    return &variant_;
  }
  // The variant itself, for a by-reference argument that keeps the type it has.
  VARIANT* InPlace() noexcept { return &variant_; }
  [[nodiscard]] VARIANT Detach() noexcept;

  VARTYPE Type() const noexcept { return variant_.vt; }
  // Nothing was stored: an absent key, or an argument left out.
  bool IsEmpty() const noexcept { return variant_.vt == VT_EMPTY || variant_.vt == VT_ERROR; }
  bool IsObject() const noexcept { return variant_.vt == VT_DISPATCH || variant_.vt == VT_UNKNOWN; }
  // An object reference that is set.
  bool HoldsObject() const noexcept { return IsObject() && variant_.punkVal; }
  bool IsText() const noexcept { return variant_.vt == VT_BSTR; }
  // A database null, which nothing converts from.
  bool IsNull() const noexcept { return variant_.vt == VT_NULL; }
  // Itself, or the empty value in place of a database null. For fields that may be without a value.
  const Value& OrEmpty() const noexcept;

  // As the platform's own conversions do it: fractions round to the nearest, ties to even; empty is 0, false and "".
  bool ToBool() const;
  std::int16_t ToInt16() const;
  std::int32_t ToInt32() const;
  float ToSingle() const;
  double ToDouble() const;
  Text ToText() const;
  // Appends what ToText gives; a database null and an unset object append nothing.
  void AppendTo(Text& text) const;
  // Compares as texts, without copying if a text is stored.
  bool EqualsText(TextView text) const;
  // Null if nothing is set (empty, null, no object); type mismatch if something else is stored.
  ComPtr<IDispatch> ToObject() const;
  // The bytes of an array of bytes; type mismatch otherwise.
  std::vector<std::byte> ToBytes() const;
  std::vector<std::int32_t> ToIntegers() const;

 private:
  // Most values are empty or plain numbers, which own nothing.
  void Clear() noexcept {
    if (variant_.vt > VT_DATE) VariantClear(&variant_);
    variant_.vt = VT_EMPTY;
  }
  Value Converted(VARTYPE type) const;

  VARIANT variant_;
};

}  // namespace tavio
