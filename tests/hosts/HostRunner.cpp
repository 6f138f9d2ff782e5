// HostRunner <prelude> <script> <folder>: runs a test script under the system's script host, with real message boxes.
// The script is put together in <folder>: the prelude, the script, a call of Finish. The host gets it in the ANSI code
// page, the only one that every version of it reads. Some hosts end silently, and well, where a script fails, so it
// counts as passed only when the line that Finish writes has come. The development platform starts from its seed.

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "tests/hosts/ForeignBoxes.h"

namespace {

namespace fs = std::filesystem;

constexpr ULONGLONG kTimeLimit = 60'000;  // milliseconds
constexpr DWORD kPause = 5;

struct Handle {
  HANDLE handle = nullptr;
  ~Handle() { CloseHandle(handle); }
};

std::string Recoded(const std::string& text, UINT from, UINT to) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int units = MultiByteToWideChar(from, 0, text.data(), length, wide.data(), length);
  std::string result(wide.size() * 4, '\0');
  const int room = static_cast<int>(result.size());
  const int bytes = WideCharToMultiByte(to, 0, wide.data(), units, result.data(), room, nullptr, nullptr);
  result.resize(static_cast<std::size_t>(bytes));
  return result;
}

std::string Contents(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

fs::path PutTogether(const fs::path& prelude, const fs::path& script, const fs::path& folder) {
  fs::create_directories(folder);
  const fs::path made = folder / script.filename();
  const std::string finish = script.extension() == L".js" ? "\nfinish();\n" : "\nFinish\n";
  std::ofstream(made, std::ios::binary) << Recoded(Contents(prelude) + Contents(script) + finish, CP_UTF8, CP_ACP);
  return made;
}

// Starts the host with its output going into `output`.
HANDLE Start(const fs::path& script, const fs::path& boxes, const fs::path& answer, HANDLE output, DWORD& id) {
  std::wstring command =
      L"cscript.exe //nologo \"" + script.wstring() + L"\" \"" + boxes.wstring() + L"\" \"" + answer.wstring() + L"\"";
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = output;
  PROCESS_INFORMATION started = {};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started)) {
    return nullptr;
  }
  CloseHandle(started.hThread);
  id = started.dwProcessId;
  return started.hProcess;
}

// The host's exit code; its boxes are answered while it runs.
DWORD Follow(HANDLE host, tavio::test::ForeignBoxes& boxes) {
  const ULONGLONG start = GetTickCount64();
  while (WaitForSingleObject(host, kPause) == WAIT_TIMEOUT) {
    boxes.AnswerAll();
    if (GetTickCount64() - start > kTimeLimit) {
      std::cout << "FAILED: the host did not end in time\n";
      TerminateProcess(host, 1);
    }
  }
  DWORD code = 1;
  GetExitCodeProcess(host, &code);
  return code;
}

int Run(const fs::path& prelude, const fs::path& script, const fs::path& folder) {
  const fs::path made = PutTogether(prelude, script, folder);
  const fs::path log = fs::path(made).concat(L".boxes"), answer = fs::path(made).concat(L".answer"),
                 output = fs::path(made).concat(L".output");
  const fs::path data = fs::path(made).concat(L".data");
  for (const auto& earlier : {log, answer, data}) fs::remove_all(earlier);
  SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", data.c_str());  // the host inherits it

  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  Handle writeEnd, host;
  writeEnd.handle = CreateFileW(output.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD id = 0;
  host.handle = Start(made, log, answer, writeEnd.handle, id);
  if (!host.handle) return std::cout << "FAILED: the script host cannot be started\n", 1;

  tavio::test::ForeignBoxes boxes(id, log, answer);
  const DWORD code = Follow(host.handle, boxes);
  const std::string said = Contents(output);
  std::cout << Recoded(said, CP_ACP, CP_UTF8);
  if (said.ends_with("finished\r\n")) return static_cast<int>(code);
  return std::cout << "FAILED: the script stopped behind the line above\n", 1;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 4) return std::cout << "usage: HostRunner <prelude> <script> <folder>\n", 2;
  return Run(fs::absolute(argv[1]), fs::absolute(argv[2]), fs::absolute(argv[3]));
}
