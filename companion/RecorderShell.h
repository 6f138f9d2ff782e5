#pragma once

#include <TavioCompanion.h>

#include "companion/Members.h"
#include "companion/recorder/Recording.h"

namespace tavio::companion {

class RecorderShell final : public Class<_Recorder> {
 public:
  ~RecorderShell() override;

  STDMETHODIMP Trace() override;
  STDMETHODIMP DryRun() override;
  STDMETHODIMP Break(BSTR progId, BSTR member, LONG call, BSTR fault, VARIANT detail) override;
  STDMETHODIMP Stop() override;
  STDMETHODIMP get_Running(VARIANT_BOOL* result) override;
  STDMETHODIMP get_Calls(IDispatch** result) override;
  STDMETHODIMP get_Entries(IDispatch** result) override;
  STDMETHODIMP get_HasEntries(VARIANT_BOOL* result) override;
  STDMETHODIMP get_Unseen(IDispatch** result) override;
  STDMETHODIMP get_Text(BSTR* result) override;
  STDMETHODIMP get_Json(BSTR* result) override;
  STDMETHODIMP get_Html(BSTR* result) override;

 private:
  struct Broken {
    Breaker::Breakage breakage;
    Value detail;
  };

  void Start(Recording::Mode mode);
  const Recording& Recorded() const;

  std::shared_ptr<Recording> recording_;
  std::vector<Broken> broken_;
};

}  // namespace tavio::companion
