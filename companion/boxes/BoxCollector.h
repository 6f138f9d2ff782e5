#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio::companion {

class LibraryImports;

// A message box of the library, or its recipient dialog, that nobody saw.
struct Box {
  Text title;
  Text text;  // of a dialog: the users in it, one per line
  UINT style = 0;
  int answer = IDOK;
  bool isDialog = false;
};

// Answers and collects the library's boxes and dialogs from its beginning to its end. Several may live, one within the
// other: the innermost answers.
class BoxCollector {
 public:
  struct Rule {
    Text part;
    int button = IDOK;
  };

  // `object`: any one of the library. Raises Error if it is none.
  explicit BoxCollector(IUnknown* object);
  ~BoxCollector();
  BoxCollector(const BoxCollector&) = delete;
  BoxCollector& operator=(const BoxCollector&) = delete;

  // A box whose text contains the part is answered with the button, if it has that; the first rule wins. Any other
  // is answered with its default button.
  std::vector<Rule> rules;
  bool dialogSends = false;
  std::vector<Box> boxes;

  // What the innermost does with a box.
  int Answer(const wchar_t* text, const wchar_t* title, UINT style);
  static BoxCollector* Innermost() noexcept;
  // Raises the first box, if there is one, as an Error without its secrets.
  void Raise() const;

 private:
  std::shared_ptr<LibraryImports> imports_;
};

int WINAPI AnswerMessageBox(HWND owner, LPCWSTR text, LPCWSTR title, UINT style);
INT_PTR WINAPI AnswerDialog(HINSTANCE module, LPCDLGTEMPLATEW dialog, HWND owner, DLGPROC procedure, LPARAM details);

}  // namespace tavio::companion
