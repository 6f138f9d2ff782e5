#include "message/dialog/RecipientListView.h"

#include <utility>

namespace tavio {
namespace {

constexpr UINT kUnticked = INDEXTOSTATEIMAGEMASK(1);
constexpr UINT kTicked = INDEXTOSTATEIMAGEMASK(2);
constexpr DWORD kExtras = LVS_EX_CHECKBOXES | LVS_EX_LABELTIP | LVS_EX_INFOTIP | LVS_EX_DOUBLEBUFFER;

constexpr bool IsInput(UINT message) noexcept {
  return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || (message >= WM_KEYFIRST && message <= WM_KEYLAST);
}

bool StartsWith(TextView name, TextView start) noexcept {
  const auto units = static_cast<int>(start.size());
  return name.size() >= start.size() &&
         CompareStringOrdinal(name.data(), units, start.data(), units, TRUE) == CSTR_EQUAL;
}

}  // namespace

void RecipientListView::Show(HWND list, Text column) {
  list_ = list;
  SetWindowLongPtrW(list, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  control_ =
      reinterpret_cast<WNDPROC>(SetWindowLongPtrW(list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ListProcedure)));
  Ask(LVM_SETEXTENDEDLISTVIEWSTYLE, kExtras, kExtras);
  Ask(LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK, 0);
  LVCOLUMNW heading = {};
  heading.mask = LVCF_TEXT;
  heading.pszText = column.data();
  Ask(LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&heading));
  Ask(LVM_SETITEMCOUNT, selection_.Rows().size(), 0);
  LVITEMW first = {};
  first.state = first.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
  Ask(LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&first));
}

LRESULT CALLBACK RecipientListView::ListProcedure(HWND list, UINT message, WPARAM wide, LPARAM details) noexcept {
  return reinterpret_cast<RecipientListView*>(GetWindowLongPtrW(list, GWLP_USERDATA))
      ->OnMessage(message, wide, details);
}

LRESULT RecipientListView::OnMessage(UINT message, WPARAM wide, LPARAM details) {
  if (message == LVM_SETITEMSTATE) return OnSetItemState(static_cast<int>(wide), *reinterpret_cast<LVITEMW*>(details));
  const bool isInput = IsInput(message);
  const bool before = std::exchange(inInput_, inInput_ || isInput);
  const LRESULT answer = CallWindowProcW(control_, list_, message, wide, details);
  inInput_ = before;
  return answer;
}

// The control keeps no ticks. What it sets itself while it handles input is told by a notification, too.
LRESULT RecipientListView::OnSetItemState(int row, LVITEMW item) {
  const UINT image = item.state & item.stateMask & LVIS_STATEIMAGEMASK;
  if ((image == kTicked || image == kUnticked) && !inInput_) {
    if (row == -1) TickAll(image == kTicked);
    if (Has(row)) Tick(row, image == kTicked);
  }
  item.stateMask &= ~LVIS_STATEIMAGEMASK;
  return CallWindowProcW(control_, list_, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

// The column takes what a scroll bar leaves of the width.
void RecipientListView::Place(const RECT& place) const {
  SetWindowPos(list_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
  RECT client;
  GetClientRect(list_, &client);
  Ask(LVM_SETCOLUMNWIDTH, 0, client.right);
}

LRESULT RecipientListView::OnNotify(NMHDR& about) {
  switch (about.code) {
    case LVN_GETDISPINFOW:
      Describe(reinterpret_cast<NMLVDISPINFOW&>(about).item);
      return 0;
    case LVN_ODFINDITEMW:
      return Find(reinterpret_cast<const NMLVFINDITEMW&>(about));
    case LVN_KEYDOWN:
      if (reinterpret_cast<const NMLVKEYDOWN&>(about).wVKey == VK_SPACE) ToggleSelected();
      return 0;
    case NM_CLICK:
    case NM_DBLCLK:
      ToggleAt(reinterpret_cast<const NMITEMACTIVATE&>(about).ptAction);
      return 0;
    default:
      return 0;
  }
}

void RecipientListView::Describe(LVITEMW& item) const {
  if (!Has(item.iItem)) return;
  const auto& row = selection_.Rows()[static_cast<std::size_t>(item.iItem)];
  if (item.mask & LVIF_TEXT) item.pszText = const_cast<wchar_t*>(row.name.c_str());  // which is only read
  if (item.mask & LVIF_STATE) item.state = (item.state & ~LVIS_STATEIMAGEMASK) | (row.ticked ? kTicked : kUnticked);
}

void RecipientListView::Tick(int row, bool ticked) {
  selection_.Tick(static_cast<std::size_t>(row), ticked);
  Ask(LVM_REDRAWITEMS, static_cast<WPARAM>(row), row);
}

void RecipientListView::TickAll(bool ticked) {
  for (std::size_t row = 0; row < selection_.Rows().size(); ++row) selection_.Tick(row, ticked);
  InvalidateRect(list_, nullptr, FALSE);
}

void RecipientListView::ToggleAt(POINT place) {
  LVHITTESTINFO hit = {};
  hit.pt = place;
  Ask(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  if (Has(hit.iItem) && hit.flags == LVHT_ONITEMSTATEICON) Tick(hit.iItem, !Ticked(hit.iItem));
}

// The row with the focus is toggled, and the other selected ones follow it.
void RecipientListView::ToggleSelected() {
  const auto next = [this](int row, UINT which) {
    return static_cast<int>(Ask(LVM_GETNEXTITEM, static_cast<WPARAM>(row), which));
  };
  const int focused = next(-1, LVNI_FOCUSED);
  if (!Has(focused)) return;
  const bool ticked = !Ticked(focused);
  Tick(focused, ticked);
  for (int row = next(-1, LVNI_SELECTED); Has(row); row = next(row, LVNI_SELECTED)) Tick(row, ticked);
}

// The control searches with it while its user types the start of a name.
int RecipientListView::Find(const NMLVFINDITEMW& wanted) const {
  if (!(wanted.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !wanted.lvfi.psz) return -1;
  const auto count = static_cast<int>(selection_.Rows().size());
  for (int step = 0; step < count; ++step) {
    const int row = (wanted.iStart + step) % count;
    if (Has(row) && StartsWith(selection_.Rows()[static_cast<std::size_t>(row)].name, wanted.lvfi.psz)) return row;
  }
  return -1;
}

}  // namespace tavio
