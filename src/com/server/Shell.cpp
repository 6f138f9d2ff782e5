#include "com/server/Shell.h"

namespace tavio::com {

HRESULT Raise(REFIID iid, const Error& error) noexcept {
  ComPtr<ICreateErrorInfo> creation;
  ComPtr<IErrorInfo> info;
  if (SUCCEEDED(CreateErrorInfo(&creation)) && SUCCEEDED(creation.As(&info))) {
    creation->SetGUID(iid);
    creation->SetSource(const_cast<wchar_t*>(error.Source().c_str()));
    creation->SetDescription(const_cast<wchar_t*>(error.Description().c_str()));
    SetErrorInfo(0, info.Get());
  }
  return FAILED(error.Number()) ? error.Number() : E_FAIL;  // components raise small numbers too
}

}  // namespace tavio::com
