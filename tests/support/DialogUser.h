#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "foundation/Text.h"

namespace tavio::test {

// The recipient dialog as a person sees and works it. Keys go the way of every message of a dialog.
class RecipientWindow {
 public:
  explicit RecipientWindow(HWND dialog) noexcept : dialog_(dialog) {}

  HWND Window() const noexcept { return dialog_; }
  HWND List() const noexcept;
  Text Caption() const { return TextOf(dialog_); }
  // "[x] Ann" or "[ ] Ann", in UTF-8.
  std::string Row(int row) const;
  std::vector<std::string> Rows() const;
  // The texts of tab, column, and the buttons that send and do not.
  std::vector<std::string> Texts() const;

  // A key that goes to the control with the focus.
  void Press(UINT key) const;
  // Alt and a letter.
  void PressAlt(wchar_t letter) const;
  void Type(wchar_t letter) const;
  // On the check box of a row.
  void Click(int row) const;
  void ClickCloseBox() const;

 private:
  static Text TextOf(HWND window);

  HWND dialog_;
};

// A person who waits for the recipient dialog while it lives, and does `actions` when it is shown. A dialog that is
// still there afterwards fails the test and is closed.
class DialogUser {
 public:
  using Actions = std::function<void(const RecipientWindow&)>;

  explicit DialogUser(Actions actions);
  ~DialogUser();
  DialogUser(const DialogUser&) = delete;
  DialogUser& operator=(const DialogUser&) = delete;

  int Shown() const noexcept { return shown_; }

 private:
  static LRESULT CALLBACK OnHook(int code, WPARAM sentHere, LPARAM details);
  static void CALLBACK OnShown(HWND, UINT, UINT_PTR timer, DWORD) noexcept;
  static void CALLBACK OnStillThere(HWND, UINT, UINT_PTR timer, DWORD) noexcept;

  HHOOK hook_;
  Actions actions_;
  HWND dialog_ = nullptr;
  UINT_PTR guard_ = 0;
  int shown_ = 0;
};

}  // namespace tavio::test
