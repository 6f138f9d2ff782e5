#pragma once

#include <memory>
#include <utility>

#include "com/server/LateBound.h"
#include "development/storage/Storage.h"
#include "foundation/packages/Component.h"

namespace tavio::development {

using com::Arguments;
using com::LateBound;

// What every object of this server is: it shares the thread's connection from its first
// use of the database to its end.
class PlatformObject : public LateBound {
 protected:
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
