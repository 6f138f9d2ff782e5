#include "message/FormObject.h"

#include <algorithm>

#include "foundation/Error.h"
#include "foundation/LetterCase.h"

namespace tavio {
namespace {

constexpr DISPID kName = 1;
constexpr DISPID kCaption = 2;
constexpr DISPID kFirstControl = 3;

}  // namespace

ComPtr<FormObject> FormObject::New(const wchar_t* name, Text caption) {
  ComPtr<FormObject> form;
  *form.GetAddressOf() = new FormObject(name, std::move(caption));
  return form;
}

STDMETHODIMP FormObject::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
  *object = known ? static_cast<IDispatch*>(this) : nullptr;
  if (known) AddRef();
  return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) FormObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP FormObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP FormObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) try {
  std::fill_n(ids, count, DISPID_UNKNOWN);
  if (count != 1) return DISP_E_UNKNOWNNAME;
  const Text wanted = ToUpper(names[0]);
  if (wanted == L"NAME") ids[0] = kName;
  if (wanted == L"CAPTION") ids[0] = kCaption;
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    if (ToUpper(controls_[i]->name_) == wanted) ids[0] = kFirstControl + static_cast<DISPID>(i);
  }
  return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
} catch (...) {
  return Translate().Number();
}

STDMETHODIMP FormObject::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                EXCEPINFO*, UINT*) try {
  if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
    Assign(member, *parameters);
  } else {
    Value held = Read(member);
    if (result) *result = held.Detach();
  }
  return S_OK;
} catch (...) {
  return Translate().Number();
}

void FormObject::Assign(DISPID member, const DISPPARAMS& parameters) {
  if (member != kCaption) throw Error::FromHresult(DISP_E_MEMBERNOTFOUND);
  if (parameters.cArgs != 1) throw Error::FromHresult(DISP_E_BADPARAMCOUNT);
  caption_ = Value::CopyOf(parameters.rgvarg[0]).ToText();
}

Value FormObject::Read(DISPID member) const {
  if (member == kName) return Value(TextView(name_));
  if (member == kCaption) return Value(TextView(caption_));
  const auto control = static_cast<std::size_t>(member - kFirstControl);
  if (control >= controls_.size()) throw Error::FromHresult(DISP_E_MEMBERNOTFOUND);
  return Value(ComPtr<IDispatch>(controls_[control]));
}

}  // namespace tavio
