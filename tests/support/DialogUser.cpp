#include "tests/support/DialogUser.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "message/frmMsgUser.h"
#include "tests/support/Packages.h"

namespace tavio::test {
namespace {

constexpr UINT kPatience = 500;
constexpr LPARAM kWithAlt = 1 << 29;

DialogUser* user = nullptr;

}  // namespace

HWND RecipientWindow::List() const noexcept { return GetDlgItem(dialog_, kLvwUserSelect); }

Text RecipientWindow::TextOf(HWND window) {
  Text text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

std::string RecipientWindow::Row(int row) const {
  wchar_t text[1024] = {};
  LVITEMW item = {};
  item.pszText = text;
  item.cchTextMax = 1024;
  SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  const auto state = SendMessageW(List(), LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_STATEIMAGEMASK);
  return (state == INDEXTOSTATEIMAGEMASK(2) ? "[x] " : "[ ] ") + Utf8(text);
}

std::vector<std::string> RecipientWindow::Rows() const {
  std::vector<std::string> rows;
  const auto count = static_cast<int>(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0));
  for (int row = 0; row < count; ++row) rows.push_back(Row(row));
  return rows;
}

std::vector<std::string> RecipientWindow::Texts() const {
  wchar_t tab[256] = {}, column[256] = {};
  TCITEMW page = {};
  page.mask = TCIF_TEXT;
  page.pszText = tab;
  page.cchTextMax = 256;
  SendDlgItemMessageW(dialog_, kTabMain, TCM_GETITEMW, 0, reinterpret_cast<LPARAM>(&page));
  LVCOLUMNW heading = {};
  heading.mask = LVCF_TEXT;
  heading.pszText = column;
  heading.cchTextMax = 256;
  SendMessageW(List(), LVM_GETCOLUMNW, 0, reinterpret_cast<LPARAM>(&heading));
  return {Utf8(tab), Utf8(column), Utf8(TextOf(GetDlgItem(dialog_, IDOK))),
          Utf8(TextOf(GetDlgItem(dialog_, IDCANCEL)))};
}

void RecipientWindow::Press(UINT key) const {
  MSG message = {};
  message.hwnd = GetFocus();
  message.message = WM_KEYDOWN;
  message.wParam = key;
  message.lParam = 1;
  if (!IsDialogMessageW(dialog_, &message)) DispatchMessageW(&message);
}

void RecipientWindow::PressAlt(wchar_t letter) const {
  MSG message = {};
  message.hwnd = GetFocus();
  message.message = WM_SYSCHAR;
  message.wParam = letter;
  message.lParam = kWithAlt;
  if (!IsDialogMessageW(dialog_, &message)) DispatchMessageW(&message);
}

void RecipientWindow::Type(wchar_t letter) const { SendMessageW(GetFocus(), WM_CHAR, letter, 1); }

void RecipientWindow::Click(int row) const {
  constexpr int kInside = 4;
  RECT bounds = {LVIR_BOUNDS, 0, 0, 0};
  SendMessageW(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&bounds));
  const LPARAM place = MAKELPARAM(bounds.left + kInside, bounds.top + kInside);
  PostMessageW(List(), WM_LBUTTONUP, 0, place);
  SendMessageW(List(), WM_LBUTTONDOWN, MK_LBUTTON, place);
}

void RecipientWindow::ClickCloseBox() const { PostMessageW(dialog_, WM_SYSCOMMAND, SC_CLOSE, 0); }

DialogUser::DialogUser(Actions actions)
    : hook_(SetWindowsHookExW(WH_CALLWNDPROCRET, &OnHook, nullptr, GetCurrentThreadId())),
      actions_(std::move(actions)) {
  user = this;
}

DialogUser::~DialogUser() {
  KillTimer(nullptr, guard_);
  UnhookWindowsHookEx(hook_);
  user = nullptr;
}

// The window is shown, and has the focus, once its own message loop runs a timer.
LRESULT CALLBACK DialogUser::OnHook(int code, WPARAM sentHere, LPARAM details) {
  const auto& handled = *reinterpret_cast<const CWPRETSTRUCT*>(details);
  if (code == HC_ACTION && handled.message == WM_INITDIALOG && GetDlgItem(handled.hwnd, kLvwUserSelect)) {
    user->dialog_ = handled.hwnd;
    ++user->shown_;
    SetTimer(nullptr, 0, 1, &OnShown);
  }
  return CallNextHookEx(nullptr, code, sentHere, details);
}

void CALLBACK DialogUser::OnShown(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  KillTimer(nullptr, timer);
  KillTimer(nullptr, user->guard_);
  user->guard_ = SetTimer(nullptr, 0, kPatience, &OnStillThere);
  if (user->actions_) user->actions_(RecipientWindow(user->dialog_));
}

void CALLBACK DialogUser::OnStillThere(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  KillTimer(nullptr, timer);
  if (!IsWindowVisible(user->dialog_)) return;
  ADD_FAILURE() << "the dialog is still there";
  EndDialog(user->dialog_, IDCANCEL);
}

}  // namespace tavio::test
