#pragma once

#include "companion/preview/Result.h"
#include "foundation/packages/Component.h"

namespace tavio::companion {

// What a preview may know beyond the message object itself; unset if it does not.
struct Context {
  Dictionary bill;
  Dictionary tableInfo;
  ComPtr<IDispatch> dataService;
  Text heading;
};

// Lets the message object's own sending operations run while a recorder keeps everything from the platform that would
// send, print or store. The object is as it was afterwards. Raises Error if the recorder cannot stand before all of
// that, and if one runs already.
Result PreviewOf(const Component& message, const Context& context);

}  // namespace tavio::companion
