#include "companion/boxes/BoxCollector.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "companion/Members.h"
#include "companion/boxes/LibraryImports.h"
#include "companion/recorder/Secrets.h"

namespace tavio::companion {
namespace {

// Those that live, the innermost last. It is never destroyed: nobody knows who is unloaded first.
std::vector<BoxCollector*>& Living() {
  static auto& living = *new std::vector<BoxCollector*>;
  return living;
}

std::weak_ptr<LibraryImports>& SharedImports() {
  static auto& imports = *new std::weak_ptr<LibraryImports>;
  return imports;
}

struct Buttons {
  UINT style;
  int buttons[3];
};
constexpr Buttons kButtons[] = {
    {MB_OK, {IDOK}},
    {MB_OKCANCEL, {IDOK, IDCANCEL}},
    {MB_ABORTRETRYIGNORE, {IDABORT, IDRETRY, IDIGNORE}},
    {MB_YESNOCANCEL, {IDYES, IDNO, IDCANCEL}},
    {MB_YESNO, {IDYES, IDNO}},
    {MB_RETRYCANCEL, {IDRETRY, IDCANCEL}},
    {MB_CANCELTRYCONTINUE, {IDCANCEL, IDTRYAGAIN, IDCONTINUE}},
};

const Buttons& ButtonsOf(UINT style) noexcept {
  const auto is = [&](const Buttons& row) { return row.style == (style & MB_TYPEMASK); };
  const auto* found = std::find_if(std::begin(kButtons), std::end(kButtons), is);
  return found == std::end(kButtons) ? kButtons[0] : *found;
}

bool Has(const Buttons& row, int button) noexcept {
  return button != 0 && std::find(std::begin(row.buttons), std::end(row.buttons), button) != std::end(row.buttons);
}

int DefaultOf(UINT style) noexcept {
  const auto& row = ButtonsOf(style);
  const UINT index = (style & MB_DEFMASK) / MB_DEFBUTTON2;
  return index < std::size(row.buttons) && row.buttons[index] ? row.buttons[index] : row.buttons[0];
}

Text WindowText(HWND window) {
  Text text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

Text ItemsOf(HWND list) {
  Text items;
  const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    wchar_t name[256] = {};
    LVITEMW item = {};
    item.pszText = name;
    item.cchTextMax = static_cast<int>(std::size(name));
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    items += (i ? L"\n" : L"") + Text(name);
  }
  return items;
}

}  // namespace

BoxCollector::BoxCollector(IUnknown* object) {
  imports_ = SharedImports().lock();
  if (!imports_ || imports_->Module() != LibraryImports::ModuleOf(object)) {
    imports_ = std::make_shared<LibraryImports>(object);
    SharedImports() = imports_;
  }
  Living().push_back(this);
}

BoxCollector::~BoxCollector() { std::erase(Living(), this); }

BoxCollector* BoxCollector::Innermost() noexcept { return Living().empty() ? nullptr : Living().back(); }

void BoxCollector::Raise() const {
  if (!boxes.empty()) throw Refused(WithoutSecrets(boxes.front().text));
}

int BoxCollector::Answer(const wchar_t* text, const wchar_t* title, UINT style) {
  Box box{title ? title : L"", text ? text : L"", style, DefaultOf(style), false};
  const auto applies = [&](const Rule& rule) {
    return box.text.find(rule.part) != Text::npos && Has(ButtonsOf(style), rule.button);
  };
  const auto rule = std::find_if(rules.begin(), rules.end(), applies);
  if (rule != rules.end()) box.answer = rule->button;
  boxes.push_back(std::move(box));
  return boxes.back().answer;
}

int WINAPI AnswerMessageBox(HWND owner, LPCWSTR text, LPCWSTR title, UINT style) {
  auto* collector = BoxCollector::Innermost();
  if (!collector) return MessageBoxW(owner, text, title, style);
  try {
    return collector->Answer(text, title, style);
  } catch (...) {
    return DefaultOf(style);
  }
}

// The dialog is made, but not shown, and its button is pressed, so that its own code does what that means. The answer is
// the button: what the dialog ends itself with is told to nobody but a modal loop.
INT_PTR WINAPI AnswerDialog(HINSTANCE module, LPCDLGTEMPLATEW dialog, HWND owner, DLGPROC procedure, LPARAM details) {
  auto* collector = BoxCollector::Innermost();
  if (!collector) return DialogBoxIndirectParamW(module, dialog, owner, procedure, details);
  const HWND window = CreateDialogIndirectParamW(module, dialog, owner, procedure, details);
  if (!window) return -1;
  const int button = collector->dialogSends ? IDOK : IDCANCEL;
  try {
    const HWND list = FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr);
    collector->boxes.push_back({WindowText(window), list ? ItemsOf(list) : Text(), 0, button, true});
  } catch (...) {
    // The user who is not there must have an answer all the same.
  }
  SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
  DestroyWindow(window);
  return button;
}

}  // namespace tavio::companion
