#include "bench/Bench.h"
#include "bench/Library.h"

namespace tavio::bench {
namespace {

constexpr DISPID kClassTypeId = 1;
constexpr DISPID kTransMessage = 21;
constexpr std::int32_t kClass = 1005;

HRESULT InvokeOn(IDispatch* object, DISPID member, WORD flags, DISPPARAMS& parameters, VARIANT* result) {
  return object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, nullptr, nullptr);
}

void MeasureAssignment(Bench& bench, const ComPtr<_Message>& message, const ComPtr<ITypeInfo>& info) {
  VARIANT arguments[] = {Value(kClass).Raw()};
  DISPID assigned = DISPID_PROPERTYPUT;
  DISPPARAMS parameters = {arguments, &assigned, 1, 1};
  bench.Compare(
      {"a late-bound assignment", "ITypeInfo::Invoke on the vtable", 3},
      [&] { return InvokeOn(message.Get(), kClassTypeId, DISPATCH_PROPERTYPUT, parameters, nullptr); },
      [&] {
        return info->Invoke(message.Get(), kClassTypeId, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr);
      });
}

// A script passes its own variables for the typed flags, and sees them changed.
void MeasureVariable(Bench& bench, const ComPtr<_Message>& message, const ComPtr<ITypeInfo>& info) {
  const Value text(L"text");
  Value result;
  VARIANT flags[] = {Value(false).Raw(), Value(true).Raw(), Value(true).Raw()};
  VARIANT variables[4] = {}, typed[4] = {};
  for (int i = 0; i < 3; ++i) {
    variables[i].vt = VT_BYREF | VT_VARIANT;
    variables[i].pvarVal = &flags[i];
    typed[i].vt = VT_BYREF | VT_BOOL;
    typed[i].pboolVal = &flags[i].boolVal;
  }
  variables[3] = typed[3] = text.Raw();
  DISPPARAMS late = {variables, nullptr, 4, 0}, direct = {typed, nullptr, 4, 0};
  bench.Compare(
      {"a call with a script's variables", "ITypeInfo::Invoke with typed references", 3},
      [&] { return InvokeOn(message.Get(), kTransMessage, DISPATCH_METHOD, late, result.Receive()); },
      [&] {
        return info->Invoke(message.Get(), kTransMessage, DISPATCH_METHOD, &direct, result.Receive(), nullptr, nullptr);
      });
}

void MeasureNames(Bench& bench, const ComPtr<_Message>& message, const ComPtr<ITypeInfo>& info) {
  wchar_t last[] = L"SendShortMessage";
  LPOLESTR names[] = {last};
  DISPID found = DISPID_UNKNOWN;
  bench.Compare(
      {"GetIDsOfNames of the last member", "ITypeInfo::GetIDsOfNames", 1.2},
      [&] {
        message->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &found);
        return found;
      },
      [&] {
        info->GetIDsOfNames(names, 1, &found);
        return found;
      });
}

}  // namespace

void MeasureDispatch(Bench& bench) {
  bench.Heading("Dispatch");
  const auto message = NewMessage();
  ComPtr<ITypeInfo> info;
  Check(message->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info));
  MeasureAssignment(bench, message, info);
  MeasureVariable(bench, message, info);
  MeasureNames(bench, message, info);
}

}  // namespace tavio::bench
