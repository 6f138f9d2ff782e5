#pragma once

#include <TavioClassBillAction.h>

#include "com/Shell.h"
#include "message/Message.h"

namespace tavio::com {

// Message as hosts see it. Failures that its operations do not report themselves reach the caller.
class MessageShell final : public Shell<_Message> {
 public:
  STDMETHODIMP put_ClassTypeID(LONG value) override;
  STDMETHODIMP get_ClassTypeID(LONG* result) override;
  STDMETHODIMP putref_Data(IDispatch* value) override;
  STDMETHODIMP putref_ClassType(IDispatch* value) override;
  STDMETHODIMP putref_TableInfo(IDispatch* value) override;
  STDMETHODIMP putref_ClassTypeEntry(IDispatch* value) override;
  STDMETHODIMP put_MustSelectMsgUser(VARIANT_BOOL value) override;
  STDMETHODIMP get_MustSelectMsgUser(VARIANT_BOOL* result) override;
  STDMETHODIMP putref_GroupInfo(VARIANT value) override;
  STDMETHODIMP putref_ExcludeUser(IDispatch* value) override;
  STDMETHODIMP SetMessage(IDispatch* message, VARIANT_BOOL* result) override;
  STDMETHODIMP GetMessage(IDispatch** result) override;
  STDMETHODIMP RefreshVariableList() override;
  STDMETHODIMP AddVariable(IDispatch* variable, VARIANT_BOOL* result) override;
  STDMETHODIMP NewMessage() override;
  STDMETHODIMP RefreshVariableValue(IDispatch** data, VARIANT_BOOL* result) override;
  STDMETHODIMP SendSMS(VARIANT_BOOL* result) override;
  STDMETHODIMP get_SelectedUser(IDispatch** result) override;
  STDMETHODIMP putref_SelectedUser(IDispatch* value) override;
  STDMETHODIMP SendMessage(IDispatch* recipients, VARIANT_BOOL* result) override;
  STDMETHODIMP AddUser(LONG* user, VARIANT_BOOL* result) override;
  STDMETHODIMP RemoveUser(LONG* user, VARIANT_BOOL* result) override;
  STDMETHODIMP RemoveAllUsers(VARIANT_BOOL* result) override;
  STDMETHODIMP TransMessage(BSTR text, VARIANT_BOOL* transCaption, VARIANT_BOOL* transValue, VARIANT_BOOL* transName,
                            BSTR* result) override;
  STDMETHODIMP GetVariableUser(IDispatch** result) override;
  STDMETHODIMP GetVariableList(IDispatch** result) override;
  STDMETHODIMP SendEmail(IDispatch* dataService, VARIANT_BOOL* result) override;
  STDMETHODIMP SendShortMessage(VARIANT_BOOL* result) override;

 private:
  // A property that keeps the package it is given.
  template <class Handle>
  HRESULT Keep(void (Message::*property)(Handle) noexcept, IDispatch* value) {
    return Do([&] { (message_.*property)(Handle(ComPtr<IDispatch>(value))); });
  }

  Message message_;
};

}  // namespace tavio::com
