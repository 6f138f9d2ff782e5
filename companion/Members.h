#pragma once

#include <utility>

#include "com/server/ComClass.h"
#include "com/server/ErrorInformation.h"
#include "companion/Words.h"
#include "foundation/packages/Vector.h"
#include "foundation/values/Error.h"

namespace tavio::companion {

// A failure of the companion's own, in finished words.
inline Error Refused(Text words) { return Error(E_INVALIDARG, L"TavioCompanion", std::move(words)); }

inline void HandOut(VARIANT_BOOL* target, bool flag) noexcept { *target = flag ? VARIANT_TRUE : VARIANT_FALSE; }
inline void HandOut(BSTR* target, const Text& text) { *target = BString(text).Detach(); }
inline void HandOut(IDispatch** target, const ComPtr<IDispatch>& object) noexcept { object.CopyTo(target); }

// The base of the companion's classes: what a member raises reaches the host, with error information. The object stays
// until a member ends: what it calls may let it go.
template <class Dual>
class Class : public com::ComClass<Dual> {
 protected:
  template <class Body>
  HRESULT Do(Body&& body) noexcept try {
    const ComPtr<Dual> held(this);
    body();
    return S_OK;
  } catch (...) {
    const Error error = Translate();
    return com::Raise(__uuidof(Dual), error.Number(), error.Source(), WordsOf(error));
  }
  template <class Target, class Body>
  HRESULT Give(Target* target, Body&& body) noexcept {
    if (!target) return E_POINTER;
    *target = Target{};
    return Do([&] { HandOut(target, body()); });
  }
};

inline ComPtr<IDispatch> ObjectOf(const Value& package) { return package.ToObject(); }
// A text parameter; a null one is empty.
inline Text TextOf(BSTR text) { return Text(ViewOf(text)); }

}  // namespace tavio::companion
