#include "tests/support/BoxWindow.h"

#include <algorithm>
#include <string_view>

namespace tavio::test {
namespace {

constexpr UINT kPatience = 2000;  // milliseconds

bool IsOfClass(HWND window, std::wstring_view wanted) {
  wchar_t name[16];
  const int length = GetClassNameW(window, name, 16);
  return std::wstring_view(name, static_cast<std::size_t>(length)) == wanted;
}

bool IsVisible(HWND control) { return (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0; }

}  // namespace

std::vector<int> ButtonsOf(HWND box) {
  std::vector<int> buttons;
  for (const int id : {IDOK, IDYES, IDNO, IDABORT, IDRETRY, IDIGNORE, IDCANCEL}) {
    const HWND button = GetDlgItem(box, id);
    if (button && IsVisible(button)) buttons.push_back(id);
  }
  return buttons;
}

int DefaultButtonOf(HWND box, const std::vector<int>& buttons) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(box, DM_GETDEFID, 0, 0, SMTO_NORMAL, kPatience, &answer);
  const int button = LOWORD(answer);
  // Where the first button is the default one, a box may answer IDOK even if it has no such button.
  return std::find(buttons.begin(), buttons.end(), button) == buttons.end() ? buttons.front() : button;
}

bool IsMessageBox(HWND window) {
  if (!IsOfClass(window, L"#32770") || !GetDlgItem(window, kBoxText)) return false;
  for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (!IsOfClass(child, L"Static") && !IsOfClass(child, L"Button")) return false;
  }
  return !ButtonsOf(window).empty();
}

}  // namespace tavio::test
