#include "foundation/values/Error.h"

#include <wrl/client.h>

#include <cwchar>
#include <new>
#include <stdexcept>

#include "foundation/values/BString.h"

namespace tavio {
namespace {

struct KnownFailure {
  HRESULT number;
  const wchar_t* text;
};

constexpr KnownFailure kKnownFailures[] = {
    {DISP_E_OVERFLOW, L"溢出"},
    {DISP_E_TYPEMISMATCH, L"类型不匹配"},
    {E_OUTOFMEMORY, L"内存不足"},
    {E_POINTER, L"对象未设置"},
    {DISP_E_UNKNOWNNAME, L"对象不支持该属性或方法"},
    {DISP_E_MEMBERNOTFOUND, L"对象不支持该属性或方法"},
    {DISP_E_BADPARAMCOUNT, L"参数数目不正确"},
    {DISP_E_PARAMNOTOPTIONAL, L"缺少必需的参数"},
};

Error WithSource(HRESULT number, TextView source) {
  for (const auto& known : kKnownFailures) {
    if (known.number == number) return Error::System(number, known.text, {}, source);
  }
  wchar_t digits[16];
  std::swprintf(digits, std::size(digits), L"0x%08lX", static_cast<unsigned long>(number));
  return Error::System(number, L"自动化错误", digits, source);
}

}  // namespace

Error Error::System(HRESULT number, TextView text, TextView detail, TextView source) {
  Error error(number, Text(source), Text(detail));
  error.text_ = text;
  return error;
}

Text Error::Description(TextView text) const {
  if (text_.empty()) return detail_;
  return detail_.empty() ? Text(text) : Text(text) + L" " + detail_;
}

Error Error::Overflow() { return FromHresult(DISP_E_OVERFLOW); }
Error Error::TypeMismatch() { return FromHresult(DISP_E_TYPEMISMATCH); }
Error Error::NotSet() { return FromHresult(E_POINTER); }
Error Error::MissingKey(TextView key) { return System(kOwnError, L"数据包缺少字段", key); }
Error Error::CannotCreate(TextView progId, HRESULT why) { return System(why, L"不能创建组件", progId); }
Error Error::NotBound(TextView source, TextView text) { return System(kOwnError, text, {}, source); }
Error Error::FromHresult(HRESULT result) { return WithSource(result, {}); }
Error Error::FromLastError() { return FromHresult(HRESULT_FROM_WIN32(GetLastError())); }

Error Error::FromObject(IUnknown* object, REFIID iid, HRESULT result) {
  Microsoft::WRL::ComPtr<ISupportErrorInfo> support;
  Microsoft::WRL::ComPtr<IErrorInfo> info;
  const bool told = SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(&support))) &&
                    support->InterfaceSupportsErrorInfo(iid) == S_OK && GetErrorInfo(0, &info) == S_OK;
  if (!told) return FromHresult(result);
  BString source, description;
  info->GetSource(source.Receive());
  info->GetDescription(description.Receive());
  return Error(result, Text(source.View()), Text(description.View()));
}

Error Error::FromInvoke(HRESULT result, EXCEPINFO& info) {
  if (result == DISP_E_EXCEPTION && info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
  BString source, description, help;
  *source.Receive() = info.bstrSource;
  *description.Receive() = info.bstrDescription;
  *help.Receive() = info.bstrHelpFile;
  if (result != DISP_E_EXCEPTION) return FromHresult(result);
  // A component that only knows a small error code has the number that automation gives such codes.
  const HRESULT number = info.scode ? info.scode : MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, info.wCode);
  if (description.View().empty()) return WithSource(number, source.View());
  return Error(number, Text(source.View()), Text(description.View()));
}

Error Translate() noexcept {
  try {
    try {
      throw;
    } catch (const Error& error) {
      return error;  // a copy, for which there may be no memory
    }
  } catch (const std::bad_alloc&) {
    return Error::FromHresult(E_OUTOFMEMORY);
  } catch (const std::overflow_error&) {
    return Error::Overflow();
  } catch (...) {
    return Error::FromHresult(E_FAIL);
  }
}

}  // namespace tavio
