#pragma once

#include "foundation/values/Value.h"

namespace tavio {

enum class Container { kDictionary, kVector };

// A new, empty container of the class registered as Vexo.Dictionary or Vexo.Vector; where none is registered, of the
// Vexo10.dll beside the library. Raises Error where neither can be had.
ComPtr<IDispatch> NewContainer(Container kind);

}  // namespace tavio
