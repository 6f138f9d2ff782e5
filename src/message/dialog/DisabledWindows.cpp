#include "message/dialog/DisabledWindows.h"

#include <new>
#include <utility>

namespace tavio {
namespace {

// Those that are there for the system only (of input methods, of COM) are invisible.
BOOL CALLBACK Collect(HWND window, LPARAM windows) noexcept try {
  if (IsWindowVisible(window) && IsWindowEnabled(window)) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  }
  return TRUE;
} catch (const std::bad_alloc&) {
  return FALSE;
}

}  // namespace

void DisabledWindows::DisableAllBut(HWND owner) {
  std::vector<HWND> windows;
  if (!EnumThreadWindows(GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&windows))) throw std::bad_alloc();
  std::erase(windows, owner);
  windows_ = std::move(windows);
  for (const HWND window : windows_) EnableWindow(window, FALSE);
}

void DisabledWindows::Enable() noexcept {
  for (const HWND window : std::exchange(windows_, {})) EnableWindow(window, TRUE);
}

}  // namespace tavio
