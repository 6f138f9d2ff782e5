#include "tests/support/BoxWatcher.h"

#include <gtest/gtest.h>

#include <ostream>

#include "tests/support/Packages.h"

namespace tavio::test {
namespace {

BoxWatcher* watcher = nullptr;

}  // namespace

std::ostream& operator<<(std::ostream& out, const Box& box) {
  return out << "box \"" << Utf8(box.text) << "\", title \"" << Utf8(box.title) << "\", style " << box.style;
}

BoxWatcher::BoxWatcher() : outer_(std::exchange(watcher, this)) {
  for (const auto* module : {static_cast<const wchar_t*>(nullptr), L"TavioClassBillAction.dll"}) {
    hooks_.emplace_back(GetModuleHandleW(module), "MessageBoxW", reinterpret_cast<void*>(&OnBox));
  }
}

BoxWatcher::~BoxWatcher() { watcher = outer_; }

int WINAPI BoxWatcher::OnBox(HWND owner, LPCWSTR text, LPCWSTR title, UINT style) {
  EXPECT_EQ(owner, GetActiveWindow());
  EXPECT_EQ((style & MB_TASKMODAL) != 0, !owner);
  const int answer = watcher->answer_;
  auto& shown = watcher->shown_;
  shown.push_back({text, title, style & (MB_TYPEMASK | MB_ICONMASK | MB_DEFMASK)});
  const bool asks = (style & MB_TYPEMASK) == MB_YESNO;
  if (asks ? answer == IDYES || answer == IDNO : answer == IDOK) return answer;
  if (answer != kAny) ADD_FAILURE() << "no button " << answer << " in " << shown.back();
  return asks ? IDYES : IDOK;
}

}  // namespace tavio::test
