#include "tests/support/BoxWatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>

#include "tests/support/BoxWindow.h"
#include "tests/support/Packages.h"

namespace tavio::test {
namespace {

BoxWatcher* watcher = nullptr;

const std::pair<UINT, std::vector<int>> kChoices[] = {
    {MB_OK, {IDOK}},
    {MB_YESNOCANCEL, {IDYES, IDNO, IDCANCEL}},
    {MB_YESNO, {IDYES, IDNO}},
};

const std::pair<UINT, LPWSTR> kIcons[] = {
    {MB_ICONERROR, IDI_ERROR},
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
  const auto* choice = std::find_if(std::begin(kChoices), std::end(kChoices),
                                    [&](const auto& known) { return known.second == buttons; });
  if (choice == std::end(kChoices)) return ~0u;
  const auto position = std::find(buttons.begin(), buttons.end(), DefaultButtonOf(box, buttons)) - buttons.begin();
  return choice->first | IconOf(box) | static_cast<UINT>(position) * MB_DEFBUTTON2;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Box& box) {
  return out << "box \"" << Utf8(box.text) << "\", title \"" << Utf8(box.title) << "\", style " << box.style;
}

BoxWatcher::BoxWatcher() : hook_(SetWindowsHookExW(WH_CALLWNDPROCRET, &OnHook, nullptr, GetCurrentThreadId())) {
  watcher = this;
}

BoxWatcher::~BoxWatcher() {
  UnhookWindowsHookEx(hook_);
  watcher = nullptr;
}

// Once a dialog has handled its start, all that it shows is set.
LRESULT CALLBACK BoxWatcher::OnHook(int code, WPARAM sentHere, LPARAM details) {
  const auto& handled = *reinterpret_cast<const CWPRETSTRUCT*>(details);
  if (code == HC_ACTION && handled.message == WM_INITDIALOG && IsMessageBox(handled.hwnd)) {
    watcher->Answer(handled.hwnd);
  }
  return CallNextHookEx(nullptr, code, sentHere, details);
}

void BoxWatcher::Answer(HWND box) {
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
