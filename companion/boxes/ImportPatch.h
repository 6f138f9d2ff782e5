#pragma once

#include <windows.h>

namespace tavio::companion {

// A function of Windows that one loaded module calls, replaced by another while this lives. No other module's calls
// change. The module must stay loaded meanwhile.
class ImportPatch {
 public:
  // Replaces nothing if there is no module, or it does not import the function by name.
  ImportPatch(HMODULE module, const char* function, void* replacement) noexcept;
  ~ImportPatch();
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;

  explicit operator bool() const noexcept { return original_ != nullptr; }

 private:
  void** slot_;
  void* original_;
};

}  // namespace tavio::companion
