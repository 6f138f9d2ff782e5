#pragma once

#include <memory>

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

}  // namespace tavio::development
