#include "tests/support/BoxWatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "tests/support/BoxWindow.h"
#include "tests/support/Packages.h"

namespace tavio::test {
namespace {

DialogHook* innermost = nullptr;

const std::pair<UINT, LPWSTR> kIcons[] = {
    {MB_ICONQUESTION, IDI_QUESTION},
    {MB_ICONWARNING, IDI_WARNING},
    {MB_ICONINFORMATION, IDI_INFORMATION},
};

UINT IconOf(HWND box) {
  for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    const auto shown = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
    for (const auto& [style, name] : kIcons) {
      if (shown && shown == LoadIconW(nullptr, name)) return style;
    }
  }
  return 0;
}

UINT StyleOf(HWND box, const std::vector<int>& buttons) {
  const bool asks = buttons == std::vector{IDYES, IDNO};
  if (!asks && buttons != std::vector{IDOK}) return ~0u;  // which this system never shows
  const UINT byDefault = DefaultButtonOf(box, buttons) == buttons.front() ? MB_DEFBUTTON1 : MB_DEFBUTTON2;
  return (asks ? MB_YESNO : MB_OK) | IconOf(box) | byDefault;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Box& box) {
  return out << "box \"" << Utf8(box.text) << "\", title \"" << Utf8(box.title) << "\", style " << box.style;
}

DialogHook::DialogHook(std::function<void(HWND)> started)
    : started_(std::move(started)), outer_(std::exchange(innermost, this)) {
  if (!outer_) hook_ = SetWindowsHookExW(WH_CALLWNDPROCRET, &OnHook, nullptr, GetCurrentThreadId());
}

DialogHook::~DialogHook() {
  if (!outer_) UnhookWindowsHookEx(hook_);
  innermost = outer_;
}

LRESULT CALLBACK DialogHook::OnHook(int code, WPARAM sentHere, LPARAM details) {
  const auto& handled = *reinterpret_cast<const CWPRETSTRUCT*>(details);
  const bool starts = code == HC_ACTION && handled.message == WM_INITDIALOG;
  for (auto* hook = starts ? innermost : nullptr; hook; hook = hook->outer_) hook->started_(handled.hwnd);
  return CallNextHookEx(nullptr, code, sentHere, details);
}

void BoxWatcher::Answer(HWND box) {
  if (!IsMessageBox(box)) return;
  const auto buttons = ButtonsOf(box);
  shown_.push_back({TextOf(GetDlgItem(box, kBoxText)), TextOf(box), StyleOf(box, buttons)});
  int button = answer_;
  if (std::find(buttons.begin(), buttons.end(), button) == buttons.end()) {
    if (button != kAny) ADD_FAILURE() << "no button " << button << " in " << shown_.back();
    button = buttons.empty() ? IDCANCEL : buttons.front();
  }
  PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
}

}  // namespace tavio::test
