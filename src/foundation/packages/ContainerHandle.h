#pragma once

#include <initializer_list>
#include <span>

#include "foundation/values/Error.h"
#include "foundation/values/InvokeByName.h"

namespace tavio {

// What the handles on both containers have in common. A container is reached on one of three paths, chosen when the
// handle is made: our own is read in place, one with the published interface is called through its vtable, and any
// other object that has the members is called by their names. `Interface` is the published one, `InPlace` ours, derived
// from it. The operations have the same outcomes on all paths.
template <class Interface, class InPlace>
class ContainerHandle {
 public:
  explicit operator bool() const noexcept { return object_ != nullptr; }
  // The very object that the handle was made from; null if unset.
  const ComPtr<IDispatch>& Object() const noexcept { return object_; }
  Value AsValue() const noexcept { return Value(object_); }
  // Whether reads run no foreign code.
  bool IsReadInPlace() const noexcept { return path_ == Path::kInPlace; }

 protected:
  enum class Path { kByName, kInterface, kInPlace };

  ContainerHandle() noexcept = default;
  ContainerHandle(const ContainerHandle&) noexcept = default;
  ContainerHandle(ContainerHandle&& other) noexcept { Swap(other); }
  // What is let go may call back, and meets a handle that is whole.
  ContainerHandle& operator=(const ContainerHandle& other) noexcept {
    ContainerHandle copy(other);
    Swap(copy);
    return *this;
  }
  ContainerHandle& operator=(ContainerHandle&& other) noexcept {
    ContainerHandle taken(std::move(other));
    Swap(taken);
    return *this;
  }
  ~ContainerHandle() = default;

  // Raises a type mismatch if the object is no container of ours, has no published interface and lacks one of the
  // `members`.
  void Bind(IDispatch* object, std::initializer_list<const wchar_t*> members) {
    const ComPtr<IDispatch> held(object);  // a host's answers by running its code
    const auto isA = [&](REFIID iid) {
      return SUCCEEDED(object->QueryInterface(iid, reinterpret_cast<void**>(object_.GetAddressOf())));
    };
    if (isA(InPlace::Id())) {
      path_ = Path::kInPlace;
    } else if (isA(__uuidof(Interface))) {
      path_ = Path::kInterface;
    } else {
      for (const auto* member : members) {
        if (!HasMember(object, member)) throw Error::TypeMismatch();
      }
      object_ = object;
    }
  }
  // Each raises Error if the handle is unset. The interface that can be called: null on the other paths. Ours is a
  // published one too.
  InPlace* ReadInPlace() const {
    RequireSet();
    return path_ == Path::kInPlace ? static_cast<InPlace*>(object_.Get()) : nullptr;
  }
  Interface* Published() const {
    RequireSet();
    return path_ == Path::kByName ? nullptr : static_cast<Interface*>(object_.Get());
  }
  void RequireSet() const {
    if (!object_) throw Error::NotSet();
  }
  // The same, held for a call that may run foreign code.
  ComPtr<Interface> HeldPublished() const { return ComPtr<Interface>(Published()); }
  // Raises Error, with the container's own words, if a call of it through the vtable failed. The caller holds it still:
  // the handle itself may be another's by then.
  static void CheckCall(IDispatch* called, HRESULT result) {
    if (FAILED(result)) throw Error::FromObject(called, __uuidof(Interface), result);
  }
  Value CallByName(const wchar_t* member, std::span<VARIANT> arguments = {}, WORD flags = kCallOrRead) const {
    return InvokeByName(object_.Get(), member, flags, arguments);
  }

 private:
  void Swap(ContainerHandle& other) noexcept {
    object_.Swap(other.object_);
    std::swap(path_, other.path_);
  }

  ComPtr<IDispatch> object_;
  Path path_ = Path::kByName;
};

}  // namespace tavio
