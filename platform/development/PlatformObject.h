#pragma once

#include <memory>
#include <utility>

#include "com/server/Module.h"
#include "development/Storage.h"
#include "support/LateBound.h"

namespace tavio::development {

// What every object of this server is: it keeps the server loaded, and shares the thread's connection from its first
// use of the database to its end.
class PlatformObject : public LateBound {
 protected:
  PlatformObject() noexcept { com::HoldModule(); }
  ~PlatformObject() override { com::LetModuleGo(); }

  Database& Store() {
    if (!store_) store_ = OpenStorage();
    return *store_;
  }

 private:
  std::shared_ptr<Database> store_;
};

// A new object with its first reference. ComPtr's Attach is not used: that of mingw-w64 adds a reference of its own.
template <class Object, class... Arguments>
ComPtr<IDispatch> MakeObject(Arguments&&... arguments) {
  ComPtr<IDispatch> object;
  *object.GetAddressOf() = new Object(std::forward<Arguments>(arguments)...);
  return object;
}

}  // namespace tavio::development
