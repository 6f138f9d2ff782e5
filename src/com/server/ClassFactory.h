#pragma once

#include "com/server/ClassTable.h"

namespace tavio::com {

// The factory of one row of the class table. Aggregation is refused.
class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ClassRow& row) noexcept;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  ~ClassFactory();

  const ClassRow& row_;
  ULONG references_ = 1;
};

}  // namespace tavio::com
