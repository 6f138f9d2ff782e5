#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace tavio::test {

// The recipient dialog as a person sees and works it. Keys go the way of every message of a dialog.
class RecipientWindow {
 public:
  explicit RecipientWindow(HWND dialog) noexcept : dialog_(dialog) {}

  HWND Window() const noexcept { return dialog_; }
  HWND List() const noexcept;
  std::string Caption() const;
  // "[x] Ann" or "[ ] Ann", in UTF-8.
  std::vector<std::string> Rows() const;
  // The texts of tab, column, and the buttons that send and do not.
  std::vector<std::string> Texts() const;

  // A key, and Alt and a letter, that go to the control with the focus.
  void Press(UINT key) const { Send(WM_KEYDOWN, key, 1); }
  void PressAlt(wchar_t letter) const { Send(WM_SYSCHAR, letter, 1 << 29); }
  void ClickCloseBox() const { PostMessageW(dialog_, WM_SYSCOMMAND, SC_CLOSE, 0); }

 private:
  void Send(UINT message, WPARAM key, LPARAM details) const;

  HWND dialog_;
};

// A person who waits for the recipient dialog while it lives, and does `actions`, which close it, when it is shown.
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

  HHOOK hook_;
  Actions actions_;
  HWND dialog_ = nullptr;
  int shown_ = 0;
};

}  // namespace tavio::test
