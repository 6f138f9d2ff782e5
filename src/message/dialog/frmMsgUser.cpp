#include "message/dialog/frmMsgUser.h"

#include <algorithm>

#include "foundation/environment/ResText.h"
#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"
#include "foundation/values/SystemHandle.h"
#include "message/dialog/VisualStyles.h"

namespace tavio {
namespace {

// In dialog units, which follow the font.
constexpr RECT kInitialSize = {0, 0, 190, 210};
constexpr RECT kLeastSize = {0, 0, 140, 110};
constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr SIZE kLeastButton = {50, 14};
constexpr int kButtonPadding = 8;

// The device context of a window or of the whole screen.
struct ContextKind {
  using Handle = HDC;
  static Handle None() noexcept { return nullptr; }
  static void Close(Handle context) noexcept { ReleaseDC(WindowFromDC(context), context); }
};
using DeviceContext = SystemHandle<ContextKind>;

// A dialog without controls, in the system's message font.
struct Template {
  alignas(DWORD) DLGTEMPLATE dialog = {};
  WORD menu = 0;
  WORD windowClass = 0;
  WORD caption = 0;
  WORD points = 0;
  wchar_t face[LF_FACESIZE] = {};

  Template() {
    dialog.style = DS_SETFONT | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN;
    dialog.dwExtendedStyle = WS_EX_DLGMODALFRAME;  // no icon
    dialog.cx = static_cast<short>(kInitialSize.right);
    dialog.cy = static_cast<short>(kInitialSize.bottom);
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    std::copy_n(metrics.lfMessageFont.lfFaceName, LF_FACESIZE, face);
    const DeviceContext screen(GetDC(nullptr));
    points = static_cast<WORD>(MulDiv(-metrics.lfMessageFont.lfHeight, 72, GetDeviceCaps(screen.Get(), LOGPIXELSY)));
  }
};
static_assert(offsetof(Template, menu) == 18, "the dialog manager reads on directly behind the fixed part");

// Buttons without a text would leave the user helpless.
Text Localised(const wchar_t* chinese) {
  const Text text = LoadResText(chinese);
  return text.empty() ? chinese : text;
}

HFONT FontOf(HWND window) { return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)); }

int TextWidth(HWND window, const Text& text) {
  const DeviceContext device(GetDC(window));
  const HGDIOBJ before = SelectObject(device.Get(), FontOf(window));
  RECT bounds = {};
  DrawTextW(device.Get(), text.c_str(), -1, &bounds, DT_CALCRECT | DT_SINGLELINE);
  SelectObject(device.Get(), before);
  return bounds.right;
}

RECT InPixels(HWND dialog, RECT units) {
  MapDialogRect(dialog, &units);
  return units;
}

void Place(HWND control, int left, int top, int width, int height) {
  SetWindowPos(control, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

frmMsgUser::frmMsgUser(RecipientSelection& selection, TextView title)
    : selection_(selection),
      list_(selection),
      title_(title),
      form_(FormObject::New(L"frmMsgUser", Localised(L"消息接收用户"))),
      tabMain_(FormObject::New(L"tabMain", form_->Caption())),
      lvwUserSelect_(FormObject::New(L"lvwUserSelect", Localised(L"用户名"))),
      cmdOK_(FormObject::New(L"cmdOK", Localised(L"发送(&O)"))),
      cmdCancel_(FormObject::New(L"cmdCancel", Localised(L"不发送(&C)"))) {
  for (const auto& control : {tabMain_, lvwUserSelect_, cmdOK_, cmdCancel_}) form_->Add(control);
  try {
    Dictionary none;
    LoadFormResources(Component(form_), none);
  } catch (const Error&) {
    // The texts are there already.
  }
}

void frmMsgUser::Show() {
  const VisualStyles styles;
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES};
  InitCommonControlsEx(&classes);
  const Template empty;
  const HWND owner = GetActiveWindow();
  behind_.DisableAllBut(owner);
  const INT_PTR answer =
      DialogBoxIndirectParamW(OwnModule(), &empty.dialog, owner, &DialogProcedure, reinterpret_cast<LPARAM>(this));
  const DWORD reason = GetLastError();
  behind_.Enable();
  if (failure_) std::rethrow_exception(failure_);
  if (answer == -1) throw Error::FromHresult(HRESULT_FROM_WIN32(reason));
}

INT_PTR CALLBACK frmMsgUser::DialogProcedure(HWND dialog, UINT message, WPARAM wide, LPARAM details) noexcept {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, details);
    reinterpret_cast<frmMsgUser*>(details)->dialog_ = dialog;
  }
  auto* form = reinterpret_cast<frmMsgUser*>(GetWindowLongPtrW(dialog, DWLP_USER));
  if (!form) return FALSE;
  try {
    return form->Handle(message, wide, details);
  } catch (...) {
    form->failure_ = std::current_exception();
    form->End(IDABORT);
    return TRUE;
  }
}

INT_PTR frmMsgUser::Handle(UINT message, WPARAM wide, LPARAM details) {
  switch (message) {
    case WM_INITDIALOG:
      OnInit();
      return FALSE;  // the focus is set
    case WM_SIZE:
      Layout();
      return TRUE;
    case WM_GETMINMAXINFO:
      LimitSize(*reinterpret_cast<MINMAXINFO*>(details));
      return TRUE;
    case WM_COMMAND:  // from buttons and keys; Escape and the close box come as IDCANCEL
      if (LOWORD(wide) == IDOK) selection_.Send();
      if (LOWORD(wide) == IDOK || LOWORD(wide) == IDCANCEL) End(LOWORD(wide));
      return TRUE;
    case WM_NOTIFY:
      if (wide == kLvwUserSelect) Answer(list_.OnNotify(*reinterpret_cast<NMHDR*>(details)));
      return wide == kLvwUserSelect;
    default:
      return FALSE;
  }
}

void frmMsgUser::End(INT_PTR answer) noexcept {
  behind_.Enable();
  EndDialog(dialog_, answer);
}

void frmMsgUser::Answer(LRESULT answer) const noexcept { SetWindowLongPtrW(dialog_, DWLP_MSGRESULT, answer); }

void frmMsgUser::OnInit() {
  SetWindowTextW(dialog_, RecipientCaption(form_->Caption(), title_).c_str());
  // In the order of the Tab key. The list lies in front of the tab strip that it seems to be a page of.
  list_.Show(AddControl(WC_LISTVIEWW, Text(), RecipientListView::kStyle, kLvwUserSelect), lvwUserSelect_->Caption());
  AddControl(WC_BUTTONW, cmdOK_->Caption(), BS_DEFPUSHBUTTON, IDOK);
  AddControl(WC_BUTTONW, cmdCancel_->Caption(), BS_PUSHBUTTON, IDCANCEL);
  AddTab();
  Layout();
  SetFocus(list_.Window());
}

HWND frmMsgUser::AddControl(const wchar_t* windowClass, const Text& caption, DWORD style, int id) const {
  const HWND control =
      CreateWindowExW(0, windowClass, caption.c_str(), style | WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, 0, dialog_,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), OwnModule(), nullptr);
  if (!control) throw Error::FromHresult(HRESULT_FROM_WIN32(GetLastError()));
  SetWindowPos(control, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(FontOf(dialog_)), FALSE);
  return control;
}

void frmMsgUser::AddTab() {
  tab_ = AddControl(WC_TABCONTROLW, Text(), WS_CLIPSIBLINGS, kTabMain);
  Text caption = tabMain_->Caption();
  TCITEMW page = {};
  page.mask = TCIF_TEXT;
  page.pszText = caption.data();
  SendMessageW(tab_, TCM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&page));
}

SIZE frmMsgUser::ButtonSize() const {
  const RECT least = InPixels(dialog_, {kButtonPadding, 0, kLeastButton.cx, kLeastButton.cy});
  const int text = std::max(TextWidth(dialog_, cmdOK_->Caption()), TextWidth(dialog_, cmdCancel_->Caption()));
  return {std::max<LONG>(least.right, text + 2 * least.left), least.bottom};
}

void frmMsgUser::Layout() const {
  RECT client;
  GetClientRect(dialog_, &client);
  const RECT units = InPixels(dialog_, {kMargin, kMargin, kGap, 0});
  const SIZE button = ButtonSize();
  const LONG buttonTop = client.bottom - units.top - button.cy;
  const LONG cancelLeft = client.right - units.left - button.cx;
  Place(GetDlgItem(dialog_, IDCANCEL), cancelLeft, buttonTop, button.cx, button.cy);
  Place(GetDlgItem(dialog_, IDOK), cancelLeft - units.right - button.cx, buttonTop, button.cx, button.cy);
  RECT page = {units.left, units.top, client.right - units.left, buttonTop - units.top};
  Place(tab_, page.left, page.top, page.right - page.left, page.bottom - page.top);
  SendMessageW(tab_, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
  InflateRect(&page, -units.right, -units.right);
  list_.Place(page);
}

void frmMsgUser::LimitSize(MINMAXINFO& limits) const noexcept {
  RECT least = InPixels(dialog_, kLeastSize);
  AdjustWindowRectEx(&least, static_cast<DWORD>(GetWindowLongPtrW(dialog_, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(dialog_, GWL_EXSTYLE)));
  limits.ptMinTrackSize = {least.right - least.left, least.bottom - least.top};
}

}  // namespace tavio
