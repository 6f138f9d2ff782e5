#pragma once

#include <windows.h>
#include <oleauto.h>

#include <type_traits>
#include <utility>

#include "com/server/ComClass.h"
#include "com/server/ErrorInformation.h"
#include "foundation/environment/ShowMessage.h"
#include "foundation/packages/Vector.h"
#include "foundation/values/Error.h"

namespace tavio::com {

// Describes a failure to the caller of a member that raises; answers the member's result.
inline HRESULT Explain(REFIID iid, const Error& error) noexcept try {
  return Raise(iid, error.Number(), error.Source(), Describe(error));
} catch (const std::bad_alloc&) {
  return Undescribed(E_OUTOFMEMORY);
}

// Runs a member without a result. No exception leaves it.
template <class Body>
HRESULT Run(REFIID iid, Body&& body) noexcept try {
  body();
  return S_OK;
} catch (...) {
  return Explain(iid, Translate());
}

// How results cross the boundary; each hands a new reference or allocation to the caller.
inline void HandOut(VARIANT_BOOL* target, bool flag) noexcept { *target = flag ? VARIANT_TRUE : VARIANT_FALSE; }
inline void HandOut(LONG* target, std::int32_t number) noexcept { *target = number; }
inline void HandOut(BSTR* target, const Text& text) { *target = BString(text).Detach(); }
inline void HandOut(BSTR* target, BString&& text) {
  *target = text.Get() ? text.Detach() : BString(TextView()).Detach();
}
inline void HandOut(IDispatch** target, const Dictionary& record) noexcept { record.Object().CopyTo(target); }
inline void HandOut(IDispatch** target, const Vector& list) noexcept { list.Object().CopyTo(target); }

// Runs a member and hands its result out.
template <class Target, class Body>
HRESULT Return(REFIID iid, Target* target, Body&& body) noexcept {
  if (!target) return Undescribed(E_POINTER);
  *target = Target{};
  return Run(iid, [&] { HandOut(target, body()); });
}

// What a by-reference parameter refers to. Raises E_POINTER for the null that only an early-bound caller can pass.
template <class T>
T Referenced(T* parameter) {
  if (!parameter) throw Error::NotSet();
  return *parameter;
}

// Texts are copied at the entrance: host code may run before they are read, and give the caller's variable another.
inline Text Copied(BSTR text) { return Text(ViewOf(text)); }

// The base of the shells: a class whose members forward to a domain object. The object stays until a member ends: a
// host whose user is asked something goes on, and may let the object go meanwhile.
template <class Dual>
class Shell : public ComClass<Dual> {
 protected:
  template <class Body>
  HRESULT Do(Body&& body) noexcept {
    const ComPtr<Dual> held(this);
    return Run(__uuidof(Dual), std::forward<Body>(body));
  }
  template <class Target, class Body>
  HRESULT Give(Target* target, Body&& body) noexcept {
    const ComPtr<Dual> held(this);
    return Return(__uuidof(Dual), target, std::forward<Body>(body));
  }
};

// A package parameter. Type mismatch if the object is no such container.
inline Dictionary AsDictionary(IDispatch* object) { return Dictionary(ComPtr<IDispatch>(object)); }
inline Vector AsVector(IDispatch* object) { return Vector(ComPtr<IDispatch>(object)); }

}  // namespace tavio::com
