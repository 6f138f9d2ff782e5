#include "foundation/values/OwnModule.h"

#include "foundation/values/Error.h"

namespace tavio {

HMODULE OwnModule() noexcept {
  static const char inThisModule = 0;
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&inThisModule), &module);
  return module;
}

Text ModuleFile() {
  Text path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(OwnModule(), path.data(), static_cast<DWORD>(path.size()));
    CheckWindows(length != 0);
    if (length < path.size()) return path.substr(0, length);
    path.resize(path.size() * 2);
  }
}

Text GetAppFolder() {
  const Text path = ModuleFile();
  return path.substr(0, path.rfind(L'\\') + 1);
}

}  // namespace tavio
