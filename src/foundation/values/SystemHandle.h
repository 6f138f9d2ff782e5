#pragma once

#include <windows.h>

#include <utility>

namespace tavio {

// A handle of the system's, closed when its owner ends. `Kind` tells the handle's type, the value that stands for none,
// and how one is closed.
template <class Kind>
class SystemHandle {
 public:
  using Handle = typename Kind::Handle;

  SystemHandle() noexcept = default;
  explicit SystemHandle(Handle handle) noexcept : handle_(handle) {}
  SystemHandle(SystemHandle&& other) noexcept : handle_(other.Detach()) {}
  SystemHandle& operator=(SystemHandle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~SystemHandle() {
    if (*this) Kind::Close(handle_);
  }

  explicit operator bool() const noexcept { return handle_ != Kind::None(); }
  Handle Get() const noexcept { return handle_; }
  // The place for the system to put a handle into; there must be none yet.
  Handle* Receive() noexcept { return &handle_; }
  [[nodiscard]] Handle Detach() noexcept { return std::exchange(handle_, Kind::None()); }

 private:
  Handle handle_ = Kind::None();
};

struct FileKind {
  using Handle = HANDLE;
  static Handle None() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(Handle file) noexcept { CloseHandle(file); }
};
using FileHandle = SystemHandle<FileKind>;

// A search for files.
struct FindKind {
  using Handle = HANDLE;
  static Handle None() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(Handle search) noexcept { FindClose(search); }
};
using FindHandle = SystemHandle<FindKind>;

struct RegistryKind {
  using Handle = HKEY;
  static Handle None() noexcept { return nullptr; }
  static void Close(Handle key) noexcept { RegCloseKey(key); }
};
using RegistryKey = SystemHandle<RegistryKind>;

}  // namespace tavio
