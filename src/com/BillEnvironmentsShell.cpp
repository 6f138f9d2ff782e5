#include "com/BillEnvironmentsShell.h"

namespace tavio::com {

STDMETHODIMP BillEnvironmentsShell::GetList(LONG mask, LONG id, IDispatch** result) {
  return Give(result, [&] { return scenarios_.GetList(mask, id); });
}
STDMETHODIMP BillEnvironmentsShell::GetSortList(LONG mask, LONG id, IDispatch** result) {
  return Give(result, [&] { return scenarios_.GetSortList(mask, id); });
}
STDMETHODIMP BillEnvironmentsShell::GetSortListMsg(LONG mask, LONG id, IDispatch** result) {
  return Give(result, [&] { return scenarios_.GetSortListMsg(mask, id); });
}
STDMETHODIMP BillEnvironmentsShell::GetBillTypeList(LONG billType, IDispatch** result) {
  return Give(result, [&] { return scenarios_.GetBillTypeList(billType); });
}
STDMETHODIMP BillEnvironmentsShell::GetItem(LONG mask, LONG id, IDispatch** result) {
  return Give(result, [&] { return scenarios_.GetItem(mask, id); });
}
STDMETHODIMP BillEnvironmentsShell::GetClassMenu(IDispatch** result) {
  return Give(result, [&] { return scenarios_.GetClassMenu(); });
}

}  // namespace tavio::com
