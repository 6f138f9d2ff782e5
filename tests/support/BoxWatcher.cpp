#include "tests/support/BoxWatcher.h"

#include <gtest/gtest.h>

#include <ostream>

#include "tests/support/Packages.h"

namespace tavio::test {
namespace {

BoxWatcher* watcher = nullptr;
DialogHook* innermost = nullptr;

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

BoxWatcher::BoxWatcher() : outer_(std::exchange(watcher, this)) {
  for (const auto* module : {static_cast<const wchar_t*>(nullptr), L"TavioClassBillAction.dll"}) {
    hooks_.emplace_back(GetModuleHandleW(module), "MessageBoxW", reinterpret_cast<void*>(&OnBox));
  }
}

BoxWatcher::~BoxWatcher() { watcher = outer_; }

int WINAPI BoxWatcher::OnBox(HWND, LPCWSTR text, LPCWSTR title, UINT style) {
  const int answer = watcher->answer_;
  auto& shown = watcher->shown_;
  shown.push_back({text, title, style & (MB_TYPEMASK | MB_ICONMASK | MB_DEFMASK)});
  const bool asks = (style & MB_TYPEMASK) == MB_YESNO;
  if (asks ? answer == IDYES || answer == IDNO : answer == IDOK) return answer;
  if (answer != kAny) ADD_FAILURE() << "no button " << answer << " in " << shown.back();
  return asks ? IDYES : IDOK;
}

}  // namespace tavio::test
