#pragma once

#include <TavioClassBillAction.h>

#include "actions/BillActions.h"
#include "com/Shell.h"

namespace tavio::com {

// BillActions as hosts see it. Failures that its operations do not report themselves reach the caller.
class BillActionsShell final : public Shell<_BillActions> {
 public:
  STDMETHODIMP put_ClassTypeID(LONG value) override;
  STDMETHODIMP get_ClassTypeID(LONG* result) override;
  STDMETHODIMP putref_ClassType(IDispatch* value) override;
  STDMETHODIMP put_ClassTypeEntry(IDispatch* value) override;
  STDMETHODIMP put_TableInfo(IDispatch* value) override;
  STDMETHODIMP put_vctPredefineAction(IDispatch* value) override;
  STDMETHODIMP Initialize() override;
  STDMETHODIMP Save(VARIANT_BOOL* result) override;
  STDMETHODIMP SetBillActions(IDispatch** actions) override;
  STDMETHODIMP NewBill() override;
  STDMETHODIMP GetBillActions(IDispatch** result) override;
  STDMETHODIMP Item(BSTR code, IDispatch** result) override;
  STDMETHODIMP GetEnvironmentItems(LONG mask, IDispatch** result) override;
  STDMETHODIMP LookUp(BSTR code, VARIANT_BOOL* result) override;
  STDMETHODIMP AddNew(IDispatch** action, VARIANT_BOOL* result) override;
  STDMETHODIMP Remove(BSTR* code, VARIANT_BOOL* result) override;
  STDMETHODIMP RemoveAll() override;
  STDMETHODIMP Update(IDispatch** action, VARIANT_BOOL* result) override;
  STDMETHODIMP GetAppendVariables(IDispatch** result) override;
  STDMETHODIMP AddAppendVariables(IDispatch* variables, VARIANT_BOOL* result) override;
  STDMETHODIMP GetMessage(BSTR code, LONG mask, IDispatch** result) override;
  STDMETHODIMP DownloadFile(VARIANT bytes, BSTR fileName, BSTR* result) override;

 private:
  BillActions actions_;
};

}  // namespace tavio::com
