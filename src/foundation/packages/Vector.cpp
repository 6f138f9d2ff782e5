#include "foundation/packages/Vector.h"

#include "containers/ReadInPlace.h"
#include "foundation/packages/NewContainer.h"
#include "foundation/values/Error.h"
#include "foundation/values/InvokeByName.h"

namespace tavio {
namespace {

constexpr WORD kRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

std::int32_t NumberByName(IDispatch* object, const wchar_t* member) {
  return InvokeByName(object, member, kRead, {}).ToInt32();
}

}  // namespace

Vector::Vector(ComPtr<IDispatch> object) {
  if (!object) return;
  if (SUCCEEDED(object->QueryInterface(IID_IVectorInPlace, reinterpret_cast<void**>(object_.GetAddressOf())))) {
    road_ = Road::kLending;
  } else if (SUCCEEDED(object->QueryInterface(__uuidof(_Vector), reinterpret_cast<void**>(object_.GetAddressOf())))) {
    road_ = Road::kInterface;
  } else if (HasMember(object.Get(), L"Item") && HasMember(object.Get(), L"Count")) {
    object_ = std::move(object);
  } else {
    throw Error::TypeMismatch();
  }
}

Vector Vector::New() { return Vector(NewContainer(Container::kVector)); }

_Vector* Vector::Own() const {
  if (!object_) throw Error::NotSet();
  return road_ == Road::kByName ? nullptr : static_cast<_Vector*>(object_.Get());
}

void Vector::CheckOwn(HRESULT result) const {
  if (FAILED(result)) throw Error::FromObject(object_.Get(), __uuidof(_Vector), result);
}

std::int32_t Vector::Count() const {
  LONG count = 0;
  if (auto* own = Own()) {
    CheckOwn(own->get_Count(&count));
    return count;
  }
  return NumberByName(object_.Get(), L"Count");
}

std::int32_t Vector::LBound() const {
  LONG bound = 0;
  if (auto* own = Own()) {
    CheckOwn(own->get_LBound(&bound));
    return bound;
  }
  return NumberByName(object_.Get(), L"LBound");
}

std::int32_t Vector::UBound() const {
  LONG bound = 0;
  if (auto* own = Own()) {
    CheckOwn(own->get_UBound(&bound));
    return bound;
  }
  return NumberByName(object_.Get(), L"UBound");
}

void Vector::Add(const Value& item) const {
  if (auto* own = Own()) {
    LONG ignored = 0;
    return CheckOwn(own->Add(item.Raw(), &ignored));
  }
  VARIANT arguments[] = {item.Raw()};
  InvokeByName(object_.Get(), L"Add", kRead, arguments);
}

StoredValue Vector::Item(std::int32_t position) const {
  auto* own = Own();
  if (road_ == Road::kLending) {
    const VARIANT* lent = nullptr;
    CheckOwn(static_cast<IVectorInPlace*>(own)->ReadItem(position, &lent));
    if (lent) return StoredValue(*lent);  // where nothing is lent, the container says why
  }
  if (own) {
    Value value;
    CheckOwn(own->get_Item(position, value.Receive()));
    return StoredValue(std::move(value));
  }
  const Value index(position);
  VARIANT arguments[] = {index.Raw()};
  return StoredValue(InvokeByName(object_.Get(), L"Item", kRead, arguments));
}

}  // namespace tavio
