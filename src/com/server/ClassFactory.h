#pragma once

#include "com/server/ClassTable.h"
#include "com/server/ComObject.h"

namespace tavio::com {

// The factory of one row of the class table. Aggregation is refused.
class ClassFactory final : public ComObject<IClassFactory> {
 public:
  explicit ClassFactory(const ClassRow& row) noexcept : row_(row) {}

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  const ClassRow& row_;
};

}  // namespace tavio::com
