#pragma once

#include <TavioClassBillAction.h>

#include "catalogues/BillEnvironments.h"
#include "com/Shell.h"

namespace tavio::com {

// BillEnvironments as hosts see it.
class BillEnvironmentsShell final : public Shell<_BillEnvironments> {
 public:
  STDMETHODIMP GetList(LONG mask, LONG id, IDispatch** result) override;
  STDMETHODIMP GetSortList(LONG mask, LONG id, IDispatch** result) override;
  STDMETHODIMP GetSortListMsg(LONG mask, LONG id, IDispatch** result) override;
  STDMETHODIMP GetBillTypeList(LONG billType, IDispatch** result) override;
  STDMETHODIMP GetItem(LONG mask, LONG id, IDispatch** result) override;
  STDMETHODIMP GetClassMenu(IDispatch** result) override;

 private:
  BillEnvironments scenarios_;
};

}  // namespace tavio::com
