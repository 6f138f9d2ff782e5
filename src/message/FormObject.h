#pragma once

#include <vector>

#include "foundation/Component.h"

namespace tavio {

// A form or a control of one, as the platform's form-text loader sees it: Name and Caption, which it assigns, and on a
// form its controls by their names. Stays usable, without effect, after the form is gone.
class FormObject final : public IDispatch {
 public:
  static ComPtr<FormObject> New(const wchar_t* name, Text caption);

  // Held by the form; the control must not hold the form in turn.
  void Add(ComPtr<FormObject> control) { controls_.push_back(std::move(control)); }
  const Text& Caption() const noexcept { return caption_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                      UINT*) override;

 private:
  FormObject(const wchar_t* name, Text caption) : name_(name), caption_(std::move(caption)) {}
  ~FormObject() = default;

  void Assign(DISPID member, const DISPPARAMS& parameters);
  Value Read(DISPID member) const;

  Text name_;
  Text caption_;
  std::vector<ComPtr<FormObject>> controls_;
  ULONG references_ = 1;
};

}  // namespace tavio
