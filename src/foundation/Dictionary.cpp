#include "foundation/Dictionary.h"

#include "containers/Lend.h"
#include "foundation/ByName.h"
#include "foundation/Containers.h"
#include "foundation/Error.h"

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
  if (SUCCEEDED(object->QueryInterface(IID_IDictionaryLend, reinterpret_cast<void**>(object_.GetAddressOf())))) {
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

IDictionaryLend* Dictionary::Lender() const noexcept {
  return road_ == Road::kLending ? static_cast<IDictionaryLend*>(object_.Get()) : nullptr;
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

LentValue Dictionary::Get(const Key& key) const {
  auto* own = Own();
  if (auto* lender = Lender()) {
    const VARIANT* lent = nullptr;
    CheckOwn(lender->LendValue(key.Get(), &lent));
    return lent ? LentValue(*lent) : LentValue(Value());
  }
  if (own) {
    Value value;
    CheckOwn(own->get_Value(key.Get(), value.Receive()));
    return LentValue(std::move(value));
  }
  return LentValue(ReadByName(object_.Get(), L"Value", key));
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
    CheckOwn(lender->LendValue(key.Get(), &lent));
    return lent != nullptr;
  }
  if (own) {
    VARIANT_BOOL found = VARIANT_FALSE;
    CheckOwn(own->Lookup(key.Get(), Value::Missing().Raw(), &found));
    return found != VARIANT_FALSE;
  }
  return ReadByName(object_.Get(), L"Lookup", key).ToBool();
}

LentValue Dictionary::GetValue(const Key& key) const {
  if (Own()) return GetValue(key, Value::Missing());
  return LentValue(ReadByName(object_.Get(), L"GetValue", key));
}

LentValue Dictionary::GetValue(const Key& key, const Value& fallback) const {
  auto* own = Own();
  if (auto* lender = Lender()) {
    const VARIANT* lent = nullptr;
    CheckOwn(lender->LendValue(key.Get(), &lent));
    if (lent) return LentValue(*lent);
    return LentValue(fallback.IsEmpty() ? Value() : fallback.Copy());
  }
  Value value;
  if (own) {
    CheckOwn(own->GetValue(key.Get(), fallback.Raw(), value.Receive()));
  } else {
    VARIANT arguments[] = {fallback.Raw(), Borrowed(key)};
    value = InvokeByName(object_.Get(), L"GetValue", kRead, arguments);
  }
  return LentValue(std::move(value));
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
    CheckOwn(lender->LendEntry(position, &key, &lent));
    return {BString(), key, lent ? LentValue(*lent) : LentValue(Value())};
  }
  BString name(Name(position));
  const BSTR key = name.Get();
  return {std::move(name), key, Get(Key::Borrow(key))};
}

LentValue Dictionary::FieldAt(std::int32_t position, const Key& key) const {
  Own();
  if (auto* lender = Lender()) {
    const VARIANT* lent = nullptr;
    const HRESULT result = lender->LendField(position, key.Get(), &lent);
    if (lent) return LentValue(*lent);
    if (SUCCEEDED(result)) return LentValue(Value());
  }
  const Dictionary record(*At(position).value);
  return LentValue(record.Get(key)->Copy());
}

}  // namespace tavio
