#pragma once

#include <TavioCompanion.h>

#include <optional>

#include "companion/Members.h"
#include "companion/boxes/BoxCollector.h"

namespace tavio::companion {

class BoxesShell final : public Class<_Boxes> {
 public:
  STDMETHODIMP AnswerWith(BSTR part, LONG button) override;
  STDMETHODIMP put_DialogSends(VARIANT_BOOL value) override;
  STDMETHODIMP get_DialogSends(VARIANT_BOOL* result) override;
  STDMETHODIMP Start() override;
  STDMETHODIMP Stop() override;
  STDMETHODIMP get_Shown(IDispatch** result) override;
  STDMETHODIMP Forget() override;

 private:
  std::vector<BoxCollector::Rule> rules_;
  bool dialogSends_ = false;
  std::vector<Box> shown_;  // of the time until Stop
  std::optional<BoxCollector> collector_;
};

}  // namespace tavio::companion
