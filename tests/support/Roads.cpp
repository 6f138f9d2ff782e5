#include "tests/support/Roads.h"

#include <windows.h>
#include <Vexo.h>

#include "foundation/Containers.h"

namespace tavio::test {
namespace {

// Hands calls by name on, and answers for no interface but one at most; that is the real container's own.
class Narrowed final : public IDispatch {
 public:
  Narrowed(ComPtr<IDispatch> real, const IID& shown) : real_(std::move(real)), shown_(shown) {}
  virtual ~Narrowed() = default;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (iid == shown_) return real_->QueryInterface(iid, object);
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
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

 private:
  ComPtr<IDispatch> real_;
  IID shown_;
  ULONG references_ = 1;
};

ComPtr<IDispatch> New(Container kind, const IID& shown) {
  ComPtr<IDispatch> object;
  *object.GetAddressOf() = new Narrowed(NewContainer(kind), shown);  // Attach adds a reference with some compilers
  return object;
}

}  // namespace

const Road kRoads[] = {
    {"Lending", [] { return NewContainer(Container::kDictionary); }, [] { return NewContainer(Container::kVector); }},
    {"Interface", [] { return New(Container::kDictionary, __uuidof(_Dictionary)); },
     [] { return New(Container::kVector, __uuidof(_Vector)); }},
    {"Names", [] { return New(Container::kDictionary, IID_NULL); }, [] { return New(Container::kVector, IID_NULL); }},
};

}  // namespace tavio::test
