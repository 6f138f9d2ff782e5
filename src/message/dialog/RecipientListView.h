#pragma once

#include <windows.h>
// Needs the one above.
#include <commctrl.h>

#include "message/dialog/RecipientSelection.h"

namespace tavio {

// The list of the recipient dialog. The control has no items of its own but asks for what it shows, so that it opens as
// fast for tens of thousands of recipients as for one; ticks go to the selection at once, be they the user's or set by a
// program (LVM_SETITEMSTATE), such as one that works the dialog for its user.
class RecipientListView {
 public:
  static constexpr DWORD kStyle = WS_BORDER | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;

  explicit RecipientListView(RecipientSelection& selection) noexcept : selection_(selection) {}

  // Shows the selection in `list`, a new list view of kStyle, which this outlives.
  void Show(HWND list, Text column);
  HWND Window() const noexcept { return list_; }
  void Place(const RECT& place) const;
  // Whatever the control tells its parent; the answer is for the control.
  LRESULT OnNotify(NMHDR& about);

 private:
  static LRESULT CALLBACK ListProcedure(HWND list, UINT message, WPARAM wide, LPARAM details) noexcept;
  LRESULT OnMessage(UINT message, WPARAM wide, LPARAM details);
  LRESULT OnSetItemState(int row, LVITEMW item);
  bool Has(int row) const noexcept { return row >= 0 && static_cast<std::size_t>(row) < selection_.Rows().size(); }
  bool Ticked(int row) const { return selection_.Rows()[static_cast<std::size_t>(row)].ticked; }
  void Describe(LVITEMW& item) const;
  void Tick(int row, bool ticked);
  void TickAll(bool ticked);
  void ToggleAt(POINT place);
  void ToggleSelected();
  int Find(const NMLVFINDITEMW& wanted) const;
  LRESULT Ask(UINT message, WPARAM wide, LPARAM details) const { return SendMessageW(list_, message, wide, details); }

  RecipientSelection& selection_;
  HWND list_ = nullptr;
  WNDPROC control_ = nullptr;
  bool inInput_ = false;
};

}  // namespace tavio
