// HostRunner <prelude> <script> [hosts]: runs a test script in this process, as a script host does, with real message boxes;
// or several at once, each in a process of its own. The development platform starts from its seed. A script has a number,
// its argument, and its user as TavioTest.User with that number behind it.

#include <process.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>

#include "companion/tavio/ScriptHost.h"
#include "foundation/values/Error.h"
#include "tests/support/BoxWatcher.h"
#include "tests/support/BoxWindow.h"
#include "tests/support/FakeComponent.h"

namespace tavio::test {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t kNumber[] = L"TAVIO_TEST_HOST";

// Who sits before the script: answers its boxes, and tells it what they were.
class User {
 public:
  explicit User(const Text& number) : component_((L"TavioTest.User" + number).c_str()) {
    component_.On(L"TakeBoxes", [this] { return std::exchange(boxes_, {}); });
    component_.On(L"Answer", [this](Arguments& a) { answer_ = a.At(0).ToInt32(); });
    component_.On(L"Finish", [this](Arguments& a) { failures_ = a.At(0).ToInt32(); });
  }
  // Failed checks, if the script came to its end.
  std::optional<int> Failures() const noexcept { return failures_; }

 private:
  // "[title] text (buttons)", with "\n" for a line break and the buttons by number.
  void OnBox(HWND box) {
    auto line = L"[" + TextOf(box) + L"] " + TextOf(GetDlgItem(box, kBoxText)) + L" (";
    for (auto at = line.find(L"\r\n"); at != line.npos; at = line.find(L"\r\n", at)) line.replace(at, 2, L"\\n");
    const auto buttons = ButtonsOf(box);
    for (const int id : buttons) line += (id == buttons.front() ? L"" : L" ") + std::to_wstring(id);
    boxes_ += (boxes_.empty() ? L"" : L"\n") + line + L")";
    const bool has = std::find(buttons.begin(), buttons.end(), answer_) != buttons.end();
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(has ? answer_ : DefaultButtonOf(box, buttons), BN_CLICKED), 0);
  }

  FakeComponent component_;
  const DialogHook hook_{[this](HWND box) { OnBox(box); }};
  Text boxes_;
  int answer_ = 0;
  std::optional<int> failures_;
};

int Run(const fs::path& script, const Text& number) try {
  User user(number);
  RunScript(script.wstring(), {number});
  if (!user.Failures()) std::cout << "FAILED: the script stopped behind the line above\n";
  return user.Failures().value_or(1);
} catch (const Error& error) {
  return std::cout << "FAILED: " << Utf8(error.Description()) << "\n", 1;
}

void PutTogether(const fs::path& prelude, const fs::path& script) {
  std::ofstream made(script.filename(), std::ios::binary);
  for (const auto& part : {prelude, script}) made << std::ifstream(part, std::ios::binary).rdbuf();
  made << "\nFinish\n";
}

int RunAll(int argc, wchar_t** argv) {
  const auto* number = _wgetenv(kNumber);
  if (number) return Run(fs::path(argv[2]).filename(), number);
  PutTogether(argv[1], argv[2]);
  const auto data = fs::absolute(fs::path(argv[2]).filename().concat(L".data"));
  fs::remove_all(data);
  _wputenv_s(L"TAVIO_DEV_FOLDER", data.c_str());
  const int hosts = argc == 4 ? std::stoi(argv[3]) : 1;
  std::vector<std::intptr_t> others;
  for (int other = 2; other <= hosts; ++other) {
    _wputenv_s(kNumber, std::to_wstring(other).c_str());
    others.push_back(_wspawnl(_P_NOWAIT, argv[0], L"HostRunner", L"-", fs::path(argv[2]).filename().c_str(), nullptr));
  }
  int failures = Run(fs::path(argv[2]).filename(), L"1");
  for (const auto other : others) {
    int code = 1;
    _cwait(&code, other, 0);
    failures += code;
  }
  return failures;
}

}  // namespace
}  // namespace tavio::test

int wmain(int argc, wchar_t** argv) {
  if (argc != 3 && argc != 4) return std::cout << "usage: HostRunner <prelude> <script> [hosts]\n", 2;
  CoInitialize(nullptr);
  const int failures = tavio::test::RunAll(argc, argv);
  CoUninitialize();
  if (!failures) std::cout << "finished\n";
  return failures;
}
