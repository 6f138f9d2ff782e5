#pragma once

#include <TavioCompanion.h>

#include <optional>

#include "companion/Members.h"
#include "companion/preview/PreviewRun.h"

namespace tavio::companion {

class PreviewShell final : public Class<_Preview> {
 public:
  STDMETHODIMP putref_Bill(IDispatch* value) override;
  STDMETHODIMP putref_TableInfo(IDispatch* value) override;
  STDMETHODIMP putref_DataService(IDispatch* value) override;
  STDMETHODIMP OfMessage(IDispatch* message, IDispatch** result) override;
  STDMETHODIMP OfBill(LONG classTypeId, BSTR action, VARIANT scenario, LONG bill, IDispatch** result) override;
  STDMETHODIMP Compose(LONG classTypeId, BSTR action, VARIANT scenario, LONG bill, IDispatch** result) override;
  STDMETHODIMP get_Package(IDispatch** result) override;
  STDMETHODIMP get_Text(BSTR* result) override;
  STDMETHODIMP get_Json(BSTR* result) override;
  STDMETHODIMP get_Html(BSTR* result) override;

 private:
  ComPtr<IDispatch> Keep(Result result);
  const Result& Last() const;

  Context context_;
  std::optional<Result> last_;
};

}  // namespace tavio::companion
