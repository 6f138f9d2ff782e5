// HostRunner <prelude> <script> <folder> [hosts]: runs a test script under the system's script host, with real message
// boxes; or under several hosts at once on one platform, each of which knows its number by its third argument.
// The script is put together in <folder>: the prelude, the script, a call of Finish. The host gets it in the ANSI code
// page, the only one that every version of it reads. Some hosts end silently, and well, where a script fails, so it
// counts as passed only when the line that Finish writes has come. The development platform starts from its seed.

#include <windows.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
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
  std::ofstream(made, std::ios::binary) << Recoded(Contents(prelude) + Contents(script) + "\nFinish\n", CP_UTF8,
                                                   CP_ACP);
  return made;
}

// One script host; what it writes goes into a file.
class Host {
 public:
  Host(const fs::path& script, int number)
      : script_(script),
        number_(std::to_wstring(number)),
        log_(File(L".boxes")),
        answer_(File(L".answer")),
        output_(File(L".output")) {
    for (const auto& earlier : {log_, answer_}) fs::remove(earlier);
  }

  bool Start() {
    std::wstring command = L"cscript.exe //nologo";
    for (const auto& argument : {script_, log_, answer_, fs::path(number_)}) {
      command += L" \"" + argument.wstring() + L"\"";
    }
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    Handle writeEnd;
    writeEnd.handle = CreateFileW(output_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = writeEnd.handle;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started)) {
      return std::cout << "FAILED: the script host cannot be started\n", false;
    }
    CloseHandle(started.hThread);
    process_.handle = started.hProcess;
    boxes_.emplace(started.dwProcessId, log_, answer_);
    return true;
  }

  // Answers its boxes, too.
  bool Runs() {
    boxes_->AnswerAll();
    return WaitForSingleObject(process_.handle, kPause) == WAIT_TIMEOUT;
  }

  void Stop() {
    std::cout << "FAILED: the host did not end in time\n";
    TerminateProcess(process_.handle, 1);
  }

  // Passes on what it wrote; answers whether it came to a good end.
  bool Report() const {
    const std::string said = Contents(output_);
    std::cout << Recoded(said, CP_ACP, CP_UTF8);
    DWORD code = 1;
    GetExitCodeProcess(process_.handle, &code);
    if (said.ends_with("finished\r\n")) return code == 0;
    return std::cout << "FAILED: the script stopped behind the line above\n", false;
  }

 private:
  fs::path File(const wchar_t* ending) const { return script_.wstring() + L"." + number_ + ending; }

  fs::path script_;
  std::wstring number_;
  fs::path log_, answer_, output_;
  Handle process_;
  std::optional<tavio::test::ForeignBoxes> boxes_;
};

void Follow(std::deque<Host>& hosts) {
  const ULONGLONG start = GetTickCount64();
  const auto runs = [](Host& host) { return host.Runs(); };
  while (std::count_if(hosts.begin(), hosts.end(), runs) > 0) {
    if (GetTickCount64() - start < kTimeLimit) continue;
    for (Host& host : hosts) {
      if (host.Runs()) host.Stop();
    }
  }
}

int Run(const fs::path& prelude, const fs::path& script, const fs::path& folder, int count) {
  const fs::path made = PutTogether(prelude, script, folder);
  const fs::path data = fs::path(made).concat(L".data");
  fs::remove_all(data);
  SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", data.c_str());  // the hosts inherit it
  std::deque<Host> hosts;
  for (int number = 1; number <= count; ++number) {
    if (!hosts.emplace_back(made, number).Start()) return 1;
  }
  Follow(hosts);
  return static_cast<int>(std::count_if(hosts.begin(), hosts.end(), [](const Host& host) { return !host.Report(); }));
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 4 && argc != 5) return std::cout << "usage: HostRunner <prelude> <script> <folder> [hosts]\n", 2;
  const int hosts = argc == 5 ? std::stoi(argv[4]) : 1;
  return Run(fs::absolute(argv[1]), fs::absolute(argv[2]), fs::absolute(argv[3]), hosts);
}
