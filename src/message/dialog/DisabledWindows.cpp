#include "message/dialog/DisabledWindows.h"

#include <new>
#include <utility>

namespace tavio {
namespace {

struct Collected {
  std::vector<HWND> windows;
  bool isComplete = true;
};

// Those that are there for the system only (of input methods, of COM) are invisible.
BOOL CALLBACK Collect(HWND window, LPARAM parameter) noexcept {
  auto& collected = *reinterpret_cast<Collected*>(parameter);
  if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
  try {
    collected.windows.push_back(window);
  } catch (const std::bad_alloc&) {
    collected.isComplete = false;
  }
  return collected.isComplete;
}

}  // namespace

void DisabledWindows::DisableAllBut(HWND owner) {
  Collected collected;
  // Its result is not asked for: Windows answers failure for a thread without windows, too.
  EnumThreadWindows(GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&collected));
  if (!collected.isComplete) throw std::bad_alloc();
  std::erase(collected.windows, owner);
  windows_ = std::move(collected.windows);
  for (const HWND window : windows_) EnableWindow(window, FALSE);
}

void DisabledWindows::Enable() noexcept {
  for (const HWND window : std::exchange(windows_, {})) EnableWindow(window, TRUE);
}

}  // namespace tavio
