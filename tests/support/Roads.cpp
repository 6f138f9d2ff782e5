#include "tests/support/Roads.h"

#include <windows.h>
#include <Vexo.h>

#include "foundation/Containers.h"

namespace tavio::test {
namespace {

// Answers for one interface only, and hands every call by name on.
template <class Interface>
class Forwarding : public Interface {
 public:
  explicit Forwarding(const ComPtr<IDispatch>& real) { real.As(&real_); }
  virtual ~Forwarding() = default;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Interface);
    *object = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return real_->GetTypeInfoCount(count); }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return real_->GetTypeInfo(index, locale, info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
    return real_->GetIDsOfNames(iid, names, count, locale, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                      EXCEPINFO* info, UINT* wrong) override {
    return real_->Invoke(id, iid, locale, flags, arguments, result, info, wrong);
  }

 protected:
  ComPtr<Interface> real_;

 private:
  ULONG references_ = 1;
};

class ForwardingDictionary final : public Forwarding<_Dictionary> {
 public:
  using Forwarding::Forwarding;
  STDMETHODIMP get_Count(LONG* result) override { return real_->get_Count(result); }
  STDMETHODIMP get_Name(LONG index, BSTR* result) override { return real_->get_Name(index, result); }
  STDMETHODIMP get_Value(BSTR key, VARIANT* result) override { return real_->get_Value(key, result); }
  STDMETHODIMP put_Value(BSTR key, VARIANT value) override { return real_->put_Value(key, value); }
  STDMETHODIMP putref_Value(BSTR key, IDispatch* value) override { return real_->putref_Value(key, value); }
  STDMETHODIMP Lookup(BSTR key, VARIANT reserved, VARIANT_BOOL* result) override {
    return real_->Lookup(key, reserved, result);
  }
  STDMETHODIMP GetValue(BSTR key, VARIANT fallback, VARIANT* result) override {
    return real_->GetValue(key, fallback, result);
  }
  STDMETHODIMP Remove(BSTR key) override { return real_->Remove(key); }
  STDMETHODIMP Clone(IDispatch** result) override { return real_->Clone(result); }
  STDMETHODIMP CloneAll(IDispatch** result) override { return real_->CloneAll(result); }
  STDMETHODIMP get__NewEnum(IUnknown** result) override { return real_->get__NewEnum(result); }
};

class ForwardingVector final : public Forwarding<_Vector>, public ISupportErrorInfo {
 public:
  using Forwarding::Forwarding;
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (iid != IID_ISupportErrorInfo) return Forwarding::QueryInterface(iid, object);
    *object = static_cast<ISupportErrorInfo*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return Forwarding::AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return Forwarding::Release(); }
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID) override { return S_OK; }
  STDMETHODIMP get_Count(LONG* result) override { return real_->get_Count(result); }
  STDMETHODIMP get_LBound(LONG* result) override { return real_->get_LBound(result); }
  STDMETHODIMP get_UBound(LONG* result) override { return real_->get_UBound(result); }
  STDMETHODIMP Add(VARIANT item, LONG* result) override { return real_->Add(item, result); }
  STDMETHODIMP get_Item(LONG index, VARIANT* result) override { return real_->get_Item(index, result); }
  STDMETHODIMP get__NewEnum(IUnknown** result) override { return real_->get__NewEnum(result); }
};

template <Container kind>
ComPtr<IDispatch> NewOwn() {
  return NewContainer(kind);
}

template <Container kind, class Object>
ComPtr<IDispatch> NewForwarding() {
  ComPtr<IDispatch> object;
  *object.GetAddressOf() = new Object(NewContainer(kind));  // Attach adds a reference with some compilers
  return object;
}

}  // namespace

const Road kRoads[] = {
    {"Lending", NewOwn<Container::kDictionary>, NewOwn<Container::kVector>},
    {"Interface", NewForwarding<Container::kDictionary, ForwardingDictionary>,
     NewForwarding<Container::kVector, ForwardingVector>},
    {"Names", NewForwarding<Container::kDictionary, Forwarding<IDispatch>>,
     NewForwarding<Container::kVector, Forwarding<IDispatch>>},
};

}  // namespace tavio::test
