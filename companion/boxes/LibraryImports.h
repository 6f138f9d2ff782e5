#pragma once

#include <windows.h>

namespace tavio::companion {

// Functions of Windows that one loaded module calls, replaced by others while this lives. No other module's calls
// change. The module stays loaded meanwhile.
class LibraryImports {
 public:
  // The module whose code `object` runs. Raises Error if it calls no message boxes: then it is not the library, but
  // what stands for it in this process.
  explicit LibraryImports(IUnknown* object);
  ~LibraryImports();
  LibraryImports(const LibraryImports&) = delete;
  LibraryImports& operator=(const LibraryImports&) = delete;

  HMODULE Module() const noexcept { return module_; }
  static HMODULE ModuleOf(IUnknown* object) noexcept;

 private:
  struct Patch {
    void** slot = nullptr;
    void* original = nullptr;
  };

  HMODULE module_ = nullptr;
  Patch messageBox_;
  Patch dialogBox_;
};

}  // namespace tavio::companion
