#pragma once

#include <windows.h>

#include <filesystem>
#include <vector>

namespace tavio::test {

// Reads and answers the message boxes of another process. Each box becomes one line of the log file, in the ANSI code
// page, since that is what script hosts read: "[title] text (buttons)" with "\n" for a line break and the buttons by
// number. A box is answered with the button whose number stands in the answer file, else with its default button.
class ForeignBoxes {
 public:
  ForeignBoxes(DWORD process, std::filesystem::path log, std::filesystem::path answer);

  // To be called again and again while the process runs.
  void AnswerAll();

 private:
  static BOOL CALLBACK OnWindow(HWND window, LPARAM self);
  void Answer(HWND box);

  DWORD process_;
  std::filesystem::path log_;
  std::filesystem::path answer_;
  std::vector<HWND> answered_;  // some of them are still on their way out
};

}  // namespace tavio::test
