#include "tests/hosts/ForeignBoxes.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>

#include "tests/support/BoxWindow.h"

namespace tavio::test {
namespace {

constexpr UINT kPatience = 2000;  // milliseconds

LRESULT Ask(HWND window, UINT message, WPARAM first, LPARAM second) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, message, first, second, SMTO_NORMAL, kPatience, &answer);
  return static_cast<LRESULT>(answer);
}

// What a script host reads: the ANSI code page, and one line.
std::string LineOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  const auto units = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(units));
  std::string line(text.size() * 4, '\0');
  line.resize(
      static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), line.data(),
                                                   static_cast<int>(line.size()), nullptr, nullptr)));
  std::erase(line, '\r');
  for (auto at = line.find('\n'); at != line.npos; at = line.find('\n', at)) line.replace(at, 1, "\\n");
  return line;
}

}  // namespace

ForeignBoxes::ForeignBoxes(DWORD process, std::filesystem::path log, std::filesystem::path answer)
    : process_(process), log_(std::move(log)), answer_(std::move(answer)) {}

void ForeignBoxes::AnswerAll() {
  std::erase_if(answered_, [](HWND box) { return !IsWindow(box); });
  EnumWindows(&OnWindow, reinterpret_cast<LPARAM>(this));
}

BOOL CALLBACK ForeignBoxes::OnWindow(HWND window, LPARAM self) {
  auto& boxes = *reinterpret_cast<ForeignBoxes*>(self);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  const bool isNew = std::find(boxes.answered_.begin(), boxes.answered_.end(), window) == boxes.answered_.end();
  if (process == boxes.process_ && isNew && IsWindowVisible(window) && IsMessageBox(window)) boxes.Answer(window);
  return TRUE;
}

void ForeignBoxes::Answer(HWND box) {
  answered_.push_back(box);
  std::ofstream log(log_, std::ios::app | std::ios::binary);
  log << '[' << LineOf(box) << "] " << LineOf(GetDlgItem(box, kBoxText)) << " (";
  const auto buttons = ButtonsOf(box);
  for (const int id : buttons) log << (id == buttons.front() ? "" : " ") << id;
  log << ")\r\n";
  log.close();  // before the host goes on and reads it

  int chosen = DefaultButtonOf(box, buttons);
  std::ifstream(answer_) >> chosen;
  PostMessageW(box, WM_COMMAND, MAKEWPARAM(chosen, BN_CLICKED), 0);
}

}  // namespace tavio::test
