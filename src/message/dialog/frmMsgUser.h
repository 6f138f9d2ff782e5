#pragma once

#include <windows.h>

#include <exception>

#include "message/dialog/DisabledWindows.h"
#include "message/dialog/FormObject.h"
#include "message/dialog/RecipientListView.h"

namespace tavio {

// Control IDs of the recipient dialog. Its buttons are IDOK (cmdOK) and IDCANCEL (cmdCancel).
enum RecipientDialogControl { kLvwUserSelect = 100, kTabMain = 101 };

// The recipient dialog: the rows of a selection with a check box each, a button that sends and one that does not.
class frmMsgUser {
 public:
  // The selection must be filled and outlive the form. Texts are localised here, and once more by the platform's
  // form-text loader if there is one; a text without a translation stays Chinese.
  frmMsgUser(RecipientSelection& selection, TextView title);

  // Shows the window over the host's active window until the user has answered, and notes the answer in the selection.
  // The other windows of the thread are disabled meanwhile. Raises Error; the window is gone then, and nothing noted.
  void Show();

 private:
  static INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wide, LPARAM details) noexcept;
  INT_PTR Handle(UINT message, WPARAM wide, LPARAM details);
  void OnInit();
  void End(INT_PTR answer) noexcept;
  void Answer(LRESULT answer) const noexcept;
  HWND AddControl(const wchar_t* windowClass, const Text& caption, DWORD style, int id) const;
  void AddTab();
  void Layout() const;
  void LimitSize(MINMAXINFO& limits) const noexcept;
  SIZE ButtonSize() const;

  RecipientSelection& selection_;
  RecipientListView list_;
  Text title_;
  ComPtr<FormObject> form_;
  ComPtr<FormObject> tabMain_;
  ComPtr<FormObject> lvwUserSelect_;
  ComPtr<FormObject> cmdOK_;
  ComPtr<FormObject> cmdCancel_;
  DisabledWindows behind_;
  HWND dialog_ = nullptr;
  HWND tab_ = nullptr;
  std::exception_ptr failure_;
};

}  // namespace tavio
