#include "com/MessageShell.h"

namespace tavio::com {
namespace {

// A by-reference flag as a bool for the time of a call; written only if the call changes it. One that an early-bound
// caller left null is false.
class Flag {
 public:
  explicit Flag(VARIANT_BOOL* target) noexcept
      : target_(target), given_(target && *target != VARIANT_FALSE), value_(given_) {}
  ~Flag() {
    if (target_ && value_ != given_) HandOut(target_, value_);
  }
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;

  bool& Get() noexcept { return value_; }

 private:
  VARIANT_BOOL* target_;
  bool given_;
  bool value_;
};

}  // namespace

STDMETHODIMP MessageShell::put_ClassTypeID(LONG value) {
  return Do([&] { message_.ClassTypeID(value); });
}
STDMETHODIMP MessageShell::get_ClassTypeID(LONG* result) {
  return Give(result, [&] { return message_.ClassTypeID(); });
}
STDMETHODIMP MessageShell::putref_Data(IDispatch* value) { return Keep(&Message::Data, value); }
STDMETHODIMP MessageShell::putref_ClassType(IDispatch* value) { return Keep(&Message::ClassType, value); }
STDMETHODIMP MessageShell::putref_TableInfo(IDispatch* value) { return Keep(&Message::TableInfo, value); }
STDMETHODIMP MessageShell::putref_ClassTypeEntry(IDispatch* value) { return Keep(&Message::ClassTypeEntry, value); }
STDMETHODIMP MessageShell::put_MustSelectMsgUser(VARIANT_BOOL value) {
  return Do([&] { message_.MustSelectMsgUser(value != VARIANT_FALSE); });
}
STDMETHODIMP MessageShell::get_MustSelectMsgUser(VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.MustSelectMsgUser(); });
}
STDMETHODIMP MessageShell::putref_GroupInfo(VARIANT value) {
  return Do([&] {
    const auto given = Value::CopyOf(value);
    if (!given.IsObject()) throw Error::TypeMismatch();
    message_.GroupInfo(Dictionary(given));
  });
}
STDMETHODIMP MessageShell::putref_ExcludeUser(IDispatch* value) { return Keep(&Message::ExcludeUser, value); }
STDMETHODIMP MessageShell::SetMessage(IDispatch* message, VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.SetMessage(AsDictionary(message)); });
}
STDMETHODIMP MessageShell::GetMessage(IDispatch** result) {
  return Give(result, [&] { return message_.GetMessage(); });
}
STDMETHODIMP MessageShell::RefreshVariableList() {
  return Do([&] { message_.RefreshVariableList(); });
}
STDMETHODIMP MessageShell::AddVariable(IDispatch* variable, VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.AddVariable(AsDictionary(variable)); });
}
STDMETHODIMP MessageShell::NewMessage() {
  return Do([&] { message_.NewMessage(); });
}
STDMETHODIMP MessageShell::RefreshVariableValue(IDispatch** data, VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.RefreshVariableValue(AsDictionary(Referenced(data))); });
}
STDMETHODIMP MessageShell::SendSMS(VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.SendSMS(); });
}
STDMETHODIMP MessageShell::get_SelectedUser(IDispatch** result) {
  return Give(result, [&] { return message_.SelectedUser(); });
}
STDMETHODIMP MessageShell::putref_SelectedUser(IDispatch* value) { return Keep(&Message::SelectedUser, value); }
STDMETHODIMP MessageShell::SendMessage(IDispatch* recipients, VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.SendMessage(AsDictionary(recipients)); });
}
STDMETHODIMP MessageShell::AddUser(LONG* user, VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.AddUser(Referenced(user)); });
}
STDMETHODIMP MessageShell::RemoveUser(LONG* user, VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.RemoveUser(Referenced(user)); });
}
STDMETHODIMP MessageShell::RemoveAllUsers(VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.RemoveAllUsers(); });
}
STDMETHODIMP MessageShell::TransMessage(BSTR text, VARIANT_BOOL* transCaption, VARIANT_BOOL* transValue,
                                        VARIANT_BOOL* transName, BSTR* result) {
  return Give(result, [&] {
    const Text copied = message_.CallsBeforeTranslating() ? Copied(text) : Text();  // long texts are worth it
    const TextView given = copied.empty() ? ViewOf(text) : copied;
    Flag caption(transCaption), value(transValue), name(transName);
    return message_.TransMessage(given, caption.Get(), value.Get(), name.Get());
  });
}
STDMETHODIMP MessageShell::GetVariableUser(IDispatch** result) {
  return Give(result, [&] { return message_.GetVariableUser(); });
}
STDMETHODIMP MessageShell::GetVariableList(IDispatch** result) {
  return Give(result, [&] { return message_.GetVariableList(); });
}
STDMETHODIMP MessageShell::SendEmail(IDispatch* dataService, VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.SendEmail(Component(dataService)); });
}
STDMETHODIMP MessageShell::SendShortMessage(VARIANT_BOOL* result) {
  return Give(result, [&] { return message_.SendShortMessage(); });
}

}  // namespace tavio::com
