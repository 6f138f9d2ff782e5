#pragma once

#include <TavioCompanion.h>

#include <optional>

#include "companion/Members.h"
#include "companion/check/Findings.h"

namespace tavio::companion {

class CheckerShell final : public Class<_Checker> {
 public:
  STDMETHODIMP Known(BSTR name) override;
  STDMETHODIMP Against(BSTR older) override;
  STDMETHODIMP OfType(LONG classTypeId, IDispatch** result) override;
  STDMETHODIMP get_Text(BSTR* result) override;
  STDMETHODIMP get_Json(BSTR* result) override;

 private:
  const Findings& Last() const;

  std::set<Text> known_;
  std::string older_;
  std::optional<Findings> last_;
};

}  // namespace tavio::companion
