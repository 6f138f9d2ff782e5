#include "com/server/ErrorInformation.h"

#include <oleauto.h>
#include <wrl/client.h>

namespace tavio::com {

HRESULT Raise(REFIID iid, HRESULT number, const Text& source, const Text& description) noexcept {
  Microsoft::WRL::ComPtr<ICreateErrorInfo> creation;
  Microsoft::WRL::ComPtr<IErrorInfo> info;
  if (SUCCEEDED(CreateErrorInfo(&creation)) && SUCCEEDED(creation.As(&info))) {
    creation->SetGUID(iid);
    creation->SetSource(const_cast<wchar_t*>(source.c_str()));
    creation->SetDescription(const_cast<wchar_t*>(description.c_str()));
    SetErrorInfo(0, info.Get());
  }
  return FAILED(number) ? number : E_FAIL;
}

}  // namespace tavio::com
