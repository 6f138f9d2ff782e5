#include "foundation/values/Value.h"

#include <cstring>

#include "foundation/values/Error.h"

namespace tavio {
namespace {

template <class T>
Value ArrayOf(VARTYPE type, std::span<const T> items) {
  SAFEARRAY* array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(items.size()));
  if (!array) throw std::bad_alloc();
  if (!items.empty()) std::memcpy(array->pvData, items.data(), items.size_bytes());
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = static_cast<VARTYPE>(VT_ARRAY | type);
  variant.parray = array;
  Value result;
  *result.Receive() = variant;
  return result;
}

template <class T>
std::vector<T> ItemsOf(const VARIANT& variant, VARTYPE type) {
  if (variant.vt != (VT_ARRAY | type) || !variant.parray || SafeArrayGetDim(variant.parray) != 1) {
    throw Error::TypeMismatch();
  }
  const std::size_t count = variant.parray->rgsabound[0].cElements;
  std::vector<T> items(count);
  if (count) std::memcpy(items.data(), variant.parray->pvData, count * sizeof(T));
  return items;
}

// The system's own copying follows a reference without a look.
HRESULT CopyBehindReference(VARIANT& target, const VARIANT& source) noexcept {
  const bool refers = (source.vt & VT_BYREF) != 0;
  if (refers && !source.byref) return DISP_E_TYPEMISMATCH;
  const bool refersTwice = source.vt == (VT_BYREF | VT_VARIANT) && (source.pvarVal->vt & VT_BYREF) != 0;
  if (refersTwice && !source.pvarVal->byref) return DISP_E_TYPEMISMATCH;
  return VariantCopyInd(&target, const_cast<VARIANT*>(&source));  // only read
}

}  // namespace

Value::Value(BString&& text) noexcept : Value() {
  variant_.vt = VT_BSTR;
  variant_.bstrVal = text.Detach();
}

Value::Value(ComPtr<IDispatch> object) noexcept : Value() {
  variant_.vt = VT_DISPATCH;
  variant_.pdispVal = object.Detach();
}

Value Value::Bytes(std::span<const std::byte> bytes) { return ArrayOf(VT_UI1, bytes); }
Value Value::Integers(std::span<const std::int32_t> integers) { return ArrayOf(VT_I4, integers); }

Value Value::Missing() noexcept {
  Value value;
  value.variant_.vt = VT_ERROR;
  value.variant_.scode = DISP_E_PARAMNOTFOUND;
  return value;
}

Value Value::Null() noexcept {
  Value value;
  value.variant_.vt = VT_NULL;
  return value;
}

Value Value::CopyOf(const VARIANT& variant) {
  Value value;
  Check(CopyBehindReference(value.variant_, variant));
  return value;
}

Value Value::CopyOrMissing(const VARIANT& variant) noexcept {
  Value value;
  return FAILED(CopyBehindReference(value.variant_, variant)) ? Missing() : std::move(value);
}

const Value& Value::OrEmpty() const noexcept {
  static const Value empty;
  return IsNull() ? empty : *this;
}

VARIANT Value::Detach() noexcept {
  const VARIANT detached = variant_;
  variant_.vt = VT_EMPTY;
  return detached;
}

Value Value::Converted(VARTYPE type) const {
  // An object is asked for its default member, and may let the place that holds it go meanwhile.
  const ComPtr<IUnknown> held(HoldsObject() ? variant_.punkVal : nullptr);
  VARIANT source = variant_;
  Value result;
  // Booleans read "True" and "False"; numbers and dates are written as the user's settings have them.
  const HRESULT changed = VariantChangeTypeEx(&result.variant_, &source, LOCALE_USER_DEFAULT, VARIANT_ALPHABOOL, type);
  if (changed == DISP_E_BADVARTYPE) throw Error::TypeMismatch();  // so are objects refused, unset ones at least
  Check(changed);
  return result;
}

bool Value::ToBool() const {
  return (variant_.vt == VT_BOOL ? variant_.boolVal : Converted(VT_BOOL).variant_.boolVal) != VARIANT_FALSE;
}

std::int16_t Value::ToInt16() const { return variant_.vt == VT_I2 ? variant_.iVal : Converted(VT_I2).variant_.iVal; }

std::int32_t Value::ToInt32() const {
  return variant_.vt == VT_I4 ? static_cast<std::int32_t>(variant_.lVal)
                              : static_cast<std::int32_t>(Converted(VT_I4).variant_.lVal);
}

float Value::ToSingle() const { return variant_.vt == VT_R4 ? variant_.fltVal : Converted(VT_R4).variant_.fltVal; }

double Value::ToDouble() const { return variant_.vt == VT_R8 ? variant_.dblVal : Converted(VT_R8).variant_.dblVal; }

Text Value::ToText() const {
  if (IsText()) return Text(ViewOf(variant_.bstrVal));
  return Text(ViewOf(Converted(VT_BSTR).variant_.bstrVal));
}

void Value::AppendTo(Text& text) const {
  if (IsNull() || (IsObject() && !HoldsObject())) return;
  if (IsText()) {
    text += ViewOf(variant_.bstrVal);
  } else {
    text += ToText();
  }
}

bool Value::EqualsText(TextView text) const {
  const bool isNumber = variant_.vt == VT_I4 || variant_.vt == VT_I2;
  if (isNumber && text.empty()) return false;  // the commonest question, and writing the number out is slow
  return IsText() ? ViewOf(variant_.bstrVal) == text : TextView(ToText()) == text;
}

ComPtr<IDispatch> Value::ToObject() const {
  if (IsEmpty() || IsNull()) return nullptr;
  if (!IsObject()) throw Error::TypeMismatch();
  if (variant_.vt == VT_DISPATCH || !variant_.punkVal) return variant_.pdispVal;
  const ComPtr<IUnknown> held(variant_.punkVal);
  ComPtr<IDispatch> object;
  if (FAILED(held.As(&object))) throw Error::TypeMismatch();
  return object;
}

std::vector<std::byte> Value::ToBytes() const { return ItemsOf<std::byte>(variant_, VT_UI1); }
std::vector<std::int32_t> Value::ToIntegers() const { return ItemsOf<std::int32_t>(variant_, VT_I4); }

}  // namespace tavio
