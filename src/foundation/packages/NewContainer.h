#pragma once

#include "foundation/values/Value.h"

namespace tavio {

enum class Container { kDictionary, kVector };

// A new, empty container of the class registered as Vexo.Dictionary or Vexo.Vector; if none is registered, of the
// Vexo10.dll beside the library. Raises Error if neither can be had.
//
// Finding the class costs hundreds of times what making a container does, so its factory is kept, for the thread that
// found it, until the library may be unloaded: a class that is registered later is not seen. A failure is not kept, and a
// factory that fails is looked up anew.
ComPtr<IDispatch> NewContainer(Container kind);

// Lets the kept factories go.
void ForgetContainerFactories() noexcept;

}  // namespace tavio
