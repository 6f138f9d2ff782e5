#pragma once

#include <windows.h>

namespace tavio::test {

// Puts a function in the place of one that a module of this process imports, while it lives. A module that does not
// import it stays as it is.
class ImportHook {
 public:
  ImportHook(HMODULE module, const char* function, void* replacement) noexcept;
  ~ImportHook();
  ImportHook(const ImportHook&) = delete;
  ImportHook& operator=(const ImportHook&) = delete;

 private:
  void** slot_;
  void* original_ = nullptr;
};

}  // namespace tavio::test
