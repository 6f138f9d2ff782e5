#pragma once

#include <windows.h>

#include "companion/boxes/ImportPatch.h"

namespace tavio::companion {

// The boxes and dialogs of the library, answered by the companion while this lives. The library stays loaded meanwhile.
class LibraryImports {
 public:
  // The module whose code `object` runs. Raises Error if it calls no message boxes: then it is not the library, but
  // what stands for it in this process.
  explicit LibraryImports(IUnknown* object);

  HMODULE Module() const noexcept { return module_.handle; }
  static HMODULE ModuleOf(IUnknown* object) noexcept;

 private:
  struct Loaded {
    HMODULE handle;
    ~Loaded();
  };

  const Loaded module_;
  const ImportPatch messageBox_;
  const ImportPatch dialogBox_;
};

}  // namespace tavio::companion
