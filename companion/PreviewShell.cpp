#include "companion/PreviewShell.h"

#include "companion/preview/Compose.h"

namespace tavio::companion {

ComPtr<IDispatch> PreviewShell::Keep(Result result) {
  last_ = std::move(result);
  return ObjectOf(ToPackage(ToJson(*last_)));
}

const Result& PreviewShell::Last() const {
  if (!last_) throw Refused(Say(words::kNoResult));
  return *last_;
}

STDMETHODIMP PreviewShell::putref_Bill(IDispatch* value) {
  return Do([&] { context_.bill = Dictionary(ComPtr<IDispatch>(value)); });
}

STDMETHODIMP PreviewShell::putref_TableInfo(IDispatch* value) {
  return Do([&] { context_.tableInfo = Dictionary(ComPtr<IDispatch>(value)); });
}

STDMETHODIMP PreviewShell::putref_DataService(IDispatch* value) {
  return Do([&] { context_.dataService = value; });
}

STDMETHODIMP PreviewShell::OfMessage(IDispatch* message, IDispatch** result) {
  return Give(result, [&] { return Keep(PreviewOf(Component(message), context_)); });
}

STDMETHODIMP PreviewShell::OfBill(LONG classTypeId, BSTR action, VARIANT scenario, LONG bill, IDispatch** result) {
  return Give(result, [&] {
    const auto composed = companion::Compose(static_cast<std::int32_t>(classTypeId), TextOf(action),
                                             Value::CopyOf(scenario), static_cast<std::int32_t>(bill));
    Context context = context_;
    context.bill = composed.bill;
    context.tableInfo = composed.tableInfo;
    context.heading = composed.heading;
    return Keep(PreviewOf(composed.message, context));
  });
}

STDMETHODIMP PreviewShell::Compose(LONG classTypeId, BSTR action, VARIANT scenario, LONG bill, IDispatch** result) {
  return Give(result, [&] {
    return companion::Compose(static_cast<std::int32_t>(classTypeId), TextOf(action), Value::CopyOf(scenario),
                              static_cast<std::int32_t>(bill))
        .message.Object();
  });
}

STDMETHODIMP PreviewShell::get_Package(IDispatch** result) {
  return Give(result, [&] { return ObjectOf(ToPackage(ToJson(Last()))); });
}

STDMETHODIMP PreviewShell::get_Text(BSTR* result) {
  return Give(result, [&] { return ToReadableText(Last()); });
}

STDMETHODIMP PreviewShell::get_Json(BSTR* result) {
  return Give(result, [&] { return ToText(ToJson(Last())); });
}

STDMETHODIMP PreviewShell::get_Html(BSTR* result) {
  return Give(result, [&] { return ToPage(Last()); });
}

}  // namespace tavio::companion
