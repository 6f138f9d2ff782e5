#include "tests/support/DialogUser.h"

#include <commctrl.h>

#include "message/frmMsgUser.h"
#include "tests/support/BoxWindow.h"
#include "tests/support/Packages.h"

namespace tavio::test {
namespace {

DialogUser* user = nullptr;

}  // namespace

HWND RecipientWindow::List() const noexcept { return GetDlgItem(dialog_, kLvwUserSelect); }

std::string RecipientWindow::Caption() const { return Utf8(TextOf(dialog_)); }

std::vector<std::string> RecipientWindow::Rows() const {
  std::vector<std::string> rows;
  wchar_t text[1024];
  LVITEMW item = {};
  item.pszText = text;
  item.cchTextMax = 1024;
  const auto count = static_cast<WPARAM>(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0));
  for (WPARAM row = 0; row < count; ++row) {
    SendMessageW(List(), LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
    const auto state = SendMessageW(List(), LVM_GETITEMSTATE, row, LVIS_STATEIMAGEMASK);
    rows.push_back((state == INDEXTOSTATEIMAGEMASK(2) ? "[x] " : "[ ] ") + Utf8(text));
  }
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

void RecipientWindow::Send(UINT message, WPARAM key, LPARAM details) const {
  MSG sent = {GetFocus(), message, key, details, 0, {}};
  if (!IsDialogMessageW(dialog_, &sent)) DispatchMessageW(&sent);
}

DialogUser::DialogUser(Actions actions)
    : hook_(SetWindowsHookExW(WH_CALLWNDPROCRET, &OnHook, nullptr, GetCurrentThreadId())),
      actions_(std::move(actions)) {
  user = this;
}

DialogUser::~DialogUser() {
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
  if (!user->actions_) EndDialog(user->dialog_, IDCANCEL);  // nobody expected it
  if (user->actions_) user->actions_(RecipientWindow(user->dialog_));
}

}  // namespace tavio::test
