#pragma once

#include <windows.h>

#include <vector>

namespace tavio {

// The windows of this thread behind a modal dialog: while they are disabled the user cannot start anything else there.
class DisabledWindows {
 public:
  DisabledWindows() noexcept = default;
  ~DisabledWindows() { Enable(); }
  DisabledWindows(const DisabledWindows&) = delete;
  DisabledWindows& operator=(const DisabledWindows&) = delete;

  // Disables all windows that a user can reach, but for the dialog's owner, which the system takes care of. Throws
  // std::bad_alloc, and has disabled none then.
  void DisableAllBut(HWND owner);
  // Enables again what was disabled. Before the dialog goes: else the system activates a window of somebody else's.
  void Enable() noexcept;

 private:
  std::vector<HWND> windows_;
};

}  // namespace tavio
