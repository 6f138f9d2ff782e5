#include "foundation/packages/Dictionary.h"

#include "containers/ReadInPlace.h"
#include "foundation/packages/NewContainer.h"
#include "foundation/values/Error.h"
#include "foundation/values/InvokeByName.h"

namespace tavio {
namespace {

VARIANT Borrowed(const Key& key) noexcept {
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = VT_BSTR;
  variant.bstrVal = key.Get();
  return variant;
}

VARIANT Borrowed(std::int32_t number) noexcept {
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = VT_I4;
  variant.lVal = number;
  return variant;
}

constexpr WORD kRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

Value ReadByName(IDispatch* object, const wchar_t* member) { return InvokeByName(object, member, kRead, {}); }

template <class Argument>
Value ReadByName(IDispatch* object, const wchar_t* member, const Argument& argument) {
  VARIANT arguments[] = {Borrowed(argument)};
  return InvokeByName(object, member, kRead, arguments);
}

}  // namespace

Dictionary::Dictionary(const ComPtr<IDispatch>& object) {
  if (object) Bind(object.Get());
}

Dictionary::Dictionary(const Value& value) {
  // Records are walked by the thousand: a stored reference is not counted up only to be asked for its interface.
  if (value.Type() == VT_DISPATCH) {
    if (auto* object = value.Raw().pdispVal) Bind(object);
  } else if (const auto object = value.ToObject()) {
    Bind(object.Get());
  }
}

void Dictionary::Bind(IDispatch* object) {
  if (SUCCEEDED(object->QueryInterface(IID_IDictionaryInPlace, reinterpret_cast<void**>(object_.GetAddressOf())))) {
    road_ = Road::kLending;
  } else if (SUCCEEDED(
                 object->QueryInterface(__uuidof(_Dictionary), reinterpret_cast<void**>(object_.GetAddressOf())))) {
    road_ = Road::kInterface;
  } else if (HasMember(object, L"Lookup")) {
    object_ = object;
  } else {
    throw Error::TypeMismatch();
  }
}

Dictionary Dictionary::New() { return Dictionary(NewContainer(Container::kDictionary)); }

_Dictionary* Dictionary::Own() const {
  if (!object_) throw Error::NotSet();
  return road_ == Road::kByName ? nullptr : static_cast<_Dictionary*>(object_.Get());
}

IDictionaryInPlace* Dictionary::Lender() const noexcept {
  return road_ == Road::kLending ? static_cast<IDictionaryInPlace*>(object_.Get()) : nullptr;
}

void Dictionary::CheckOwn(HRESULT result) const {
  if (FAILED(result)) throw Error::FromObject(object_.Get(), __uuidof(_Dictionary), result);
}

std::int32_t Dictionary::Count() const {
  if (auto* own = Own()) {
    LONG count = 0;
    CheckOwn(own->get_Count(&count));
    return count;
  }
  return ReadByName(object_.Get(), L"Count").ToInt32();
}

Text Dictionary::Name(std::int32_t position) const {
  if (auto* own = Own()) {
    BString name;
    CheckOwn(own->get_Name(position, name.Receive()));
    return Text(name.View());
  }
  return ReadByName(object_.Get(), L"Name", position).ToText();
}

StoredValue Dictionary::Get(const Key& key) const {
  auto* own = Own();
  if (auto* lender = Lender()) {
    const VARIANT* lent = nullptr;
    CheckOwn(lender->ReadValue(key.Get(), &lent));
    return lent ? StoredValue(*lent) : StoredValue(Value());
  }
  if (own) {
    Value value;
    CheckOwn(own->get_Value(key.Get(), value.Receive()));
    return StoredValue(std::move(value));
  }
  return StoredValue(ReadByName(object_.Get(), L"Value", key));
}

void Dictionary::Set(const Key& key, const Value& value) const {
  auto* own = Own();
  if (value.IsObject()) {
    const auto object = value.ToObject();
    if (own) return CheckOwn(own->putref_Value(key.Get(), object.Get()));
    VARIANT arguments[] = {value.Raw(), Borrowed(key)};
    InvokeByName(object_.Get(), L"Value", DISPATCH_PROPERTYPUTREF, arguments);
    return;
  }
  if (own) return CheckOwn(own->put_Value(key.Get(), value.Raw()));
  VARIANT arguments[] = {value.Raw(), Borrowed(key)};
  InvokeByName(object_.Get(), L"Value", DISPATCH_PROPERTYPUT, arguments);
}

void Dictionary::Set(const Key& key, const Dictionary& object) const { Set(key, object.AsValue()); }

bool Dictionary::Lookup(const Key& key) const {
  auto* own = Own();
  if (auto* lender = Lender()) {
    const VARIANT* lent = nullptr;
    CheckOwn(lender->ReadValue(key.Get(), &lent));
    return lent != nullptr;
  }
  if (own) {
    VARIANT_BOOL found = VARIANT_FALSE;
    CheckOwn(own->Lookup(key.Get(), Value::Missing().Raw(), &found));
    return found != VARIANT_FALSE;
  }
  return ReadByName(object_.Get(), L"Lookup", key).ToBool();
}

StoredValue Dictionary::GetValue(const Key& key) const {
  if (Own()) return GetValue(key, Value::Missing());
  return StoredValue(ReadByName(object_.Get(), L"GetValue", key));
}

StoredValue Dictionary::GetValue(const Key& key, const Value& fallback) const {
  auto* own = Own();
  if (auto* lender = Lender()) {
    const VARIANT* lent = nullptr;
    CheckOwn(lender->ReadValue(key.Get(), &lent));
    if (lent) return StoredValue(*lent);
    return StoredValue(fallback.IsEmpty() ? Value() : fallback.Copy());
  }
  Value value;
  if (own) {
    CheckOwn(own->GetValue(key.Get(), fallback.Raw(), value.Receive()));
  } else {
    VARIANT arguments[] = {fallback.Raw(), Borrowed(key)};
    value = InvokeByName(object_.Get(), L"GetValue", kRead, arguments);
  }
  return StoredValue(std::move(value));
}

void Dictionary::Remove(const Key& key) const {
  if (auto* own = Own()) return CheckOwn(own->Remove(key.Get()));
  ReadByName(object_.Get(), L"Remove", key);
}

Dictionary Dictionary::Clone() const {
  if (auto* own = Own()) {
    ComPtr<IDispatch> copy;
    CheckOwn(own->Clone(&copy));
    return Dictionary(copy);
  }
  return Dictionary(ReadByName(object_.Get(), L"Clone"));
}

Dictionary Dictionary::CloneAll() const {
  // By name on every road: the platform reaches this one member so.
  Own();
  return Dictionary(ReadByName(object_.Get(), L"CloneAll"));
}

Dictionary::Entry Dictionary::At(std::int32_t position) const {
  Own();
  if (auto* lender = Lender()) {
    BSTR key = nullptr;
    const VARIANT* lent = nullptr;
    CheckOwn(lender->ReadEntry(position, &key, &lent));
    return {BString(), key, lent ? StoredValue(*lent) : StoredValue(Value())};
  }
  BString name(Name(position));
  const BSTR key = name.Get();
  return {std::move(name), key, Get(Key::Borrow(key))};
}

StoredValue Dictionary::FieldAt(std::int32_t position, const Key& key) const {
  Own();
  if (auto* lender = Lender()) {
    const VARIANT* lent = nullptr;
    const HRESULT result = lender->ReadField(position, key.Get(), &lent);
    if (lent) return StoredValue(*lent);
    if (SUCCEEDED(result)) return StoredValue(Value());
  }
  const Dictionary record(*At(position).value);
  return StoredValue(record.Get(key)->Copy());
}

}  // namespace tavio
