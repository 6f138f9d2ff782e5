#pragma once

#include <TavioClassBillAction.h>

#include "catalogues/PredefineActions.h"
#include "com/Shell.h"

namespace tavio::com {

// PredefineActions as hosts see it.
class PredefineActionsShell final : public Shell<_PredefineActions> {
 public:
  STDMETHODIMP Item(BSTR code, IDispatch** result) override;
  STDMETHODIMP SetList(IDispatch** items, VARIANT_BOOL* result) override;
  STDMETHODIMP GetList(IDispatch** result) override;
  STDMETHODIMP LookUp(BSTR code, VARIANT_BOOL* result) override;
  STDMETHODIMP GetDefaultActions(LONG billType, IDispatch** result) override;
  STDMETHODIMP LookupRightMask(LONG mask, VARIANT_BOOL* result) override;

 private:
  PredefineActions actions_;
};

}  // namespace tavio::com
