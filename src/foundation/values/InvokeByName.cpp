#include "foundation/values/InvokeByName.h"

#include "foundation/values/Error.h"

namespace tavio {
namespace {

HRESULT FindMember(IDispatch* object, const wchar_t* name, DISPID& member) noexcept {
  const ComPtr<IDispatch> held(object);
  auto* text = const_cast<LPOLESTR>(name);
  return object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &member);
}

}  // namespace

bool HasMember(IDispatch* object, const wchar_t* name) noexcept {
  DISPID member;
  return SUCCEEDED(FindMember(object, name, member));
}

DISPID MemberOf(IDispatch* object, const wchar_t* name) {
  DISPID member;
  Check(FindMember(object, name, member));
  return member;
}

Value InvokeByName(IDispatch* object, const wchar_t* name, WORD flags, std::span<VARIANT> arguments) {
  const ComPtr<IDispatch> held(object);
  return InvokeMember(object, MemberOf(object, name), flags, arguments);
}

Value InvokeMember(IDispatch* object, DISPID member, WORD flags, std::span<VARIANT> arguments) {
  const ComPtr<IDispatch> held(object);
  const bool assigns = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPID assigned = DISPID_PROPERTYPUT;
  DISPPARAMS parameters = {arguments.data(), assigns ? &assigned : nullptr, static_cast<UINT>(arguments.size()),
                           assigns ? 1u : 0u};
  Value result;
  EXCEPINFO info = {};
  HRESULT outcome = object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                   assigns ? nullptr : result.Receive(), &info, nullptr);
  if (outcome == DISP_E_MEMBERNOTFOUND && flags == DISPATCH_PROPERTYPUTREF) {
    // Script objects often know only one kind of assignment.
    outcome = object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters, nullptr, &info,
                             nullptr);
  }
  if (FAILED(outcome)) throw Error::FromInvoke(outcome, info);
  return result;
}

}  // namespace tavio
