#include "foundation/packages/Vector.h"

#include "containers/ReadInPlace.h"
#include "foundation/packages/NewContainer.h"

namespace tavio {

// Item and Count alone are what any collection has, and some add an item that they are asked for.
Vector::Vector(const ComPtr<IDispatch>& object) {
  if (object) Bind(object.Get(), {L"Item", L"Count", L"UBound"});
}

Vector Vector::New() { return Vector(NewContainer(Container::kVector)); }

std::int32_t Vector::Count() const {
  const auto published = HeldPublished();
  if (!published) return CallByName(L"Count").ToInt32();
  LONG count = 0;
  CheckCall(published.Get(), published->get_Count(&count));
  return count;
}

void Vector::Add(const Value& item) const {
  const Value copy = ReadInPlace() ? Value() : item.Copy();
  const Value& passed = ReadInPlace() ? item : copy;
  if (const auto published = HeldPublished()) {
    LONG ignored = 0;
    return CheckCall(published.Get(), published->Add(passed.Raw(), &ignored));
  }
  VARIANT arguments[] = {passed.Raw()};
  CallByName(L"Add", arguments);
}

StoredValue Vector::Item(std::int32_t position) const {
  if (auto* own = ReadInPlace()) {
    const VARIANT* stored = nullptr;
    CheckCall(own, own->ReadItem(position, &stored));
    if (stored) return StoredValue(*stored);  // if nothing is stored there, the container says why
  }
  if (const auto published = HeldPublished()) {
    Value value;
    CheckCall(published.Get(), published->get_Item(position, value.Receive()));
    return StoredValue(std::move(value));
  }
  VARIANT arguments[] = {Value(position).Raw()};
  return StoredValue(CallByName(L"Item", arguments));
}

}  // namespace tavio
