#pragma once

#include <windows.h>

#include <functional>
#include <iosfwd>
#include <list>
#include <utility>
#include <vector>

#include "companion/boxes/ImportPatch.h"
#include "foundation/values/Text.h"

namespace tavio::test {

// A message box. `style` holds its buttons, icon and default button.
struct Box {
  Text text;
  Text title;
  UINT style = MB_OK;

  bool operator==(const Box&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Box& box);

using Boxes = std::vector<Box>;

// A text as the user reads it, who sees which of them were localised, and how often.
inline Text Localised(const Text& text) { return L"«" + text + L"»"; }

// A box of one of the system's own texts.
inline Box Localised(const Text& text, UINT style) { return {Localised(text), Localised(L"Morla提示"), style}; }
inline Box Warning(const Text& text) { return Localised(text, MB_OK | MB_ICONWARNING); }

// Calls `started` with each dialog of this thread while it lives. All that a dialog shows is set then.
class DialogHook {
 public:
  explicit DialogHook(std::function<void(HWND)> started);
  ~DialogHook();
  DialogHook(const DialogHook&) = delete;
  DialogHook& operator=(const DialogHook&) = delete;

 private:
  static LRESULT CALLBACK OnHook(int code, WPARAM sentHere, LPARAM details);

  std::function<void(HWND)> started_;
  DialogHook* outer_;
  HHOOK hook_ = nullptr;
};

// Answers the message boxes of this program and of the loaded library while it lives, in place of the system: no window
// is made for them.
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
  // From here on boxes are windows, which the test answers.
  void ShowWindows() { hooks_.clear(); }

 private:
  static int WINAPI OnBox(HWND owner, LPCWSTR text, LPCWSTR title, UINT style);

  int answer_ = IDOK;
  Boxes shown_;
  BoxWatcher* outer_;
  std::list<companion::ImportPatch> hooks_;
};

}  // namespace tavio::test
