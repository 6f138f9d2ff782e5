#pragma once

#include <windows.h>

#include <iosfwd>
#include <utility>
#include <vector>

#include "foundation/Text.h"

namespace tavio::test {

// A message box as its user sees it. `style` holds what can be read back of the flags: buttons, icon, default button.
struct Box {
  Text text;
  Text title;
  UINT style = MB_OK;

  bool operator==(const Box&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Box& box);

using Boxes = std::vector<Box>;

// The report of a failed operation.
inline Box Warning(Text text) { return {std::move(text), L"Morla提示", MB_OK | MB_ICONWARNING}; }

// Reads and answers the message boxes of this thread while it lives, by a hook on the start of dialogs. There is at
// most one watcher at a time.
class BoxWatcher {
 public:
  BoxWatcher();
  ~BoxWatcher();
  BoxWatcher(const BoxWatcher&) = delete;
  BoxWatcher& operator=(const BoxWatcher&) = delete;

  // The button that the following boxes are answered with, IDOK at the start. A box that lacks it fails the test and is
  // answered with its first button; kAny answers every box so.
  static constexpr int kAny = 0;
  void AnswerWith(int button) noexcept { answer_ = button; }
  // The boxes shown since the last call.
  Boxes Take() { return std::exchange(shown_, {}); }

 private:
  static LRESULT CALLBACK OnHook(int code, WPARAM window, LPARAM details);
  void Answer(HWND box);

  HHOOK hook_;
  int answer_ = IDOK;
  Boxes shown_;
};

}  // namespace tavio::test
