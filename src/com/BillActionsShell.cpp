#include "com/BillActionsShell.h"

namespace tavio::com {
STDMETHODIMP BillActionsShell::put_ClassTypeID(LONG value) {
  return Do([&] { actions_.ClassTypeID(value); });
}
STDMETHODIMP BillActionsShell::get_ClassTypeID(LONG* result) {
  return Give(result, [&] { return actions_.ClassTypeID(); });
}
STDMETHODIMP BillActionsShell::putref_ClassType(IDispatch* value) {
  return Do([&] { actions_.ClassType(AsDictionary(value)); });
}
STDMETHODIMP BillActionsShell::put_ClassTypeEntry(IDispatch* value) {
  return Do([&] { actions_.ClassTypeEntry(AsVector(value)); });
}
STDMETHODIMP BillActionsShell::put_TableInfo(IDispatch* value) {
  return Do([&] { actions_.TableInfo(AsDictionary(value)); });
}
STDMETHODIMP BillActionsShell::put_vctPredefineAction(IDispatch* value) {
  return Do([&] { actions_.vctPredefineAction(AsVector(value)); });
}
STDMETHODIMP BillActionsShell::Initialize() {
  return Do([&] { actions_.Initialize(); });
}
STDMETHODIMP BillActionsShell::Save(VARIANT_BOOL* result) {
  return Give(result, [&] { return actions_.Save(); });
}
STDMETHODIMP BillActionsShell::SetBillActions(IDispatch** actions) {
  return Do([&] { actions_.SetBillActions(AsDictionary(Referenced(actions))); });
}
STDMETHODIMP BillActionsShell::NewBill() {
  return Do([&] { actions_.NewBill(); });
}
STDMETHODIMP BillActionsShell::GetBillActions(IDispatch** result) {
  return Give(result, [&] { return actions_.GetBillActions(); });
}
STDMETHODIMP BillActionsShell::Item(BSTR code, IDispatch** result) {
  return Give(result, [&] { return actions_.Item(Copied(code)); });
}
STDMETHODIMP BillActionsShell::GetEnvironmentItems(LONG mask, IDispatch** result) {
  return Give(result, [&] { return actions_.GetEnvironmentItems(mask); });
}
STDMETHODIMP BillActionsShell::LookUp(BSTR code, VARIANT_BOOL* result) {
  return Give(result, [&] { return actions_.LookUp(Copied(code)); });
}
STDMETHODIMP BillActionsShell::AddNew(IDispatch** action, VARIANT_BOOL* result) {
  return Give(result, [&] { return actions_.AddNew(AsDictionary(Referenced(action))); });
}
STDMETHODIMP BillActionsShell::Remove(BSTR* code, VARIANT_BOOL* result) {
  return Give(result, [&] { return actions_.Remove(Copied(Referenced(code))); });
}
STDMETHODIMP BillActionsShell::RemoveAll() {
  return Do([&] { actions_.RemoveAll(); });
}
STDMETHODIMP BillActionsShell::Update(IDispatch** action, VARIANT_BOOL* result) {
  return Give(result, [&] { return actions_.Update(AsDictionary(Referenced(action))); });
}
STDMETHODIMP BillActionsShell::GetAppendVariables(IDispatch** result) {
  return Give(result, [&] { return actions_.GetAppendVariables(); });
}
STDMETHODIMP BillActionsShell::AddAppendVariables(IDispatch* variables, VARIANT_BOOL* result) {
  return Give(result, [&] { return actions_.AddAppendVariables(AsDictionary(variables)); });
}
STDMETHODIMP BillActionsShell::GetMessage(BSTR code, LONG mask, IDispatch** result) {
  return Give(result, [&] { return actions_.GetMessage(Copied(code), mask); });
}
STDMETHODIMP BillActionsShell::DownloadFile(VARIANT bytes, BSTR fileName, BSTR* result) {
  return Give(result, [&] { return actions_.DownloadFile(Value::CopyOrMissing(bytes), Copied(fileName)); });
}

}  // namespace tavio::com
