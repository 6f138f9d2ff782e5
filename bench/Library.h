#pragma once

#include <TavioClassBillAction.h>
#include <Vexo.h>

#include "com/server/ComObject.h"
#include "foundation/packages/Vector.h"
#include "foundation/values/Error.h"

namespace tavio::bench {

// A new object of the library beside this program, made as a host's system makes it: by the class's factory.
ComPtr<IDispatch> NewObject(REFCLSID id);

template <class Interface>
ComPtr<Interface> New(REFCLSID id) {
  ComPtr<Interface> object;
  Check(NewObject(id).As(&object));
  return object;
}
inline ComPtr<_Message> NewMessage() { return New<_Message>(__uuidof(::Message)); }
inline ComPtr<_BillActions> NewBillActions() { return New<_BillActions>(__uuidof(::BillActions)); }

// Bound, and with an empty package.
ComPtr<_Message> NewBoundMessage();
void AddVariable(const ComPtr<_Message>& message, const Text& name, const Text& caption, const Text& value);

// Whose container a package is, and so how the library reaches it.
enum class Maker { kOurs, kPublished, kByName };

// A host's own container over one of ours: by name only, or with the published interface too. Its members are reached as
// most hosts' are, through a type library.
class HostBox final : public com::ComObject<IDispatch> {
 public:
  HostBox(ComPtr<IDispatch> real, Maker maker) noexcept : real_(std::move(real)), maker_(maker) {}
  // `package` itself, or a host's box over it.
  static ComPtr<IDispatch> Over(const ComPtr<IDispatch>& package, Maker maker);

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return real_->GetTypeInfoCount(count); }
  STDMETHODIMP GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) override {
    return real_->GetTypeInfo(index, lcid, info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID lcid, DISPID* ids) override {
    return real_->GetIDsOfNames(iid, names, count, lcid, ids);
  }
  STDMETHODIMP Invoke(DISPID member, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                      EXCEPINFO* info, UINT* wrong) override {
    return real_->Invoke(member, iid, lcid, flags, arguments, result, info, wrong);
  }

 private:
  ComPtr<IDispatch> real_;
  Maker maker_;
};

// An action collection of that many records, with codes "Action1", "Action2" and so on.
ComPtr<IDispatch> Actions(std::int32_t count, Maker maker = Maker::kOurs);
Text CodeOf(std::int32_t number);

}  // namespace tavio::bench
