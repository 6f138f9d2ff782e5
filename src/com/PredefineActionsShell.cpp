#include "com/PredefineActionsShell.h"

namespace tavio::com {

STDMETHODIMP PredefineActionsShell::Item(BSTR code, IDispatch** result) {
  return Give(result, [&] { return actions_.Item(Copied(code)); });
}
STDMETHODIMP PredefineActionsShell::SetList(IDispatch** items, VARIANT_BOOL* result) {
  return Give(result, [&] { return actions_.SetList(Value(ComPtr<IDispatch>(Referenced(items)))); });
}
STDMETHODIMP PredefineActionsShell::GetList(IDispatch** result) {
  return Give(result, [&] { return actions_.GetList(); });
}
STDMETHODIMP PredefineActionsShell::LookUp(BSTR code, VARIANT_BOOL* result) {
  return Give(result, [&] { return actions_.LookUp(Copied(code)); });
}
STDMETHODIMP PredefineActionsShell::GetDefaultActions(LONG billType, IDispatch** result) {
  return Give(result, [&] { return actions_.GetDefaultActions(billType); });
}
STDMETHODIMP PredefineActionsShell::LookupRightMask(LONG mask, VARIANT_BOOL* result) {
  return Give(result, [&] { return actions_.LookupRightMask(mask); });
}

}  // namespace tavio::com
