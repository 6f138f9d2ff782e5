#include "tests/support/BoxWindow.h"

#include <algorithm>

namespace tavio::test {
namespace {

bool IsVisible(HWND control) { return (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0; }

}  // namespace

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

std::vector<int> ButtonsOf(HWND box) {
  std::vector<int> buttons;
  for (const int id : {IDOK, IDYES, IDNO, IDABORT, IDRETRY, IDIGNORE, IDCANCEL}) {
    const HWND button = GetDlgItem(box, id);
    if (button && IsVisible(button)) buttons.push_back(id);
  }
  return buttons;
}

// Asked for its default button, a box answers wrongly under Wine.
int DefaultButtonOf(HWND box, const std::vector<int>& buttons) {
  // Not what the dialog names as its default, which can be a button that the box does not have.
  const auto isDefault = [&](int id) {
    return (GetWindowLongPtrW(GetDlgItem(box, id), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
  };
  const auto found = std::find_if(buttons.begin(), buttons.end(), isDefault);
  return found == buttons.end() ? IDOK : *found;
}

}  // namespace tavio::test
