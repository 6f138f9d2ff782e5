#include "companion/tavio/Console.h"

#include <windows.h>

#include <string>

#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/SystemHandle.h"

namespace tavio::console {
namespace {

bool IsConsole(HANDLE stream) {
  DWORD mode = 0;
  return GetConsoleMode(stream, &mode) != 0;
}

void Write(DWORD which, TextView text) {
  const HANDLE stream = GetStdHandle(which);
  DWORD written = 0;
  if (IsConsole(stream)) {
    WriteConsoleW(stream, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    return;
  }
  const auto bytes = ToUtf8(text);
  ::WriteFile(stream, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

// In the system's words, without the line end behind them.
Text WordsFor(DWORD failure) {
  wchar_t words[512];
  constexpr DWORD kHow = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  const DWORD length = FormatMessageW(kHow, nullptr, failure, 0, words, static_cast<DWORD>(std::size(words)), nullptr);
  if (length == 0) return Error::FromHresult(HRESULT_FROM_WIN32(failure)).Description();
  const TextView text(words, length);
  return Text(text.substr(0, text.find_last_not_of(L"\r\n .。") + 1));
}

FileHandle Open(const Text& path, DWORD access, DWORD how) {
  FileHandle file(CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (file) return file;
  const DWORD failure = GetLastError();
  throw Error(HRESULT_FROM_WIN32(failure), L"tavio", path + L": " + WordsFor(failure));
}

}  // namespace

void Print(TextView text) { Write(STD_OUTPUT_HANDLE, text); }
void PrintError(TextView text) { Write(STD_ERROR_HANDLE, text); }
bool HasErrorConsole() { return IsConsole(GetStdHandle(STD_ERROR_HANDLE)); }

Text ReadLine() {
  const HANDLE stream = GetStdHandle(STD_INPUT_HANDLE);
  DWORD read = 0;
  Text line;
  if (IsConsole(stream)) {
    wchar_t typed[256];
    ReadConsoleW(stream, typed, static_cast<DWORD>(std::size(typed)), &read, nullptr);
    line.assign(typed, read);
  } else {
    std::string bytes;
    for (char byte; ::ReadFile(stream, &byte, 1, &read, nullptr) && read == 1 && byte != '\n';) bytes += byte;
    line = FromUtf8(bytes);
  }
  return line.substr(0, line.find_first_of(L"\r\n"));
}

void WriteFile(const Text& path, TextView text) {
  const auto file = Open(path, GENERIC_WRITE, CREATE_ALWAYS);
  const auto bytes = ToUtf8(text);
  DWORD written = 0;
  CheckWindows(::WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0 &&
               written == bytes.size());
}

std::string ReadFile(const Text& path) {
  const auto file = Open(path, GENERIC_READ, OPEN_EXISTING);
  std::string bytes(GetFileSize(file.Get(), nullptr), '\0');
  DWORD read = 0;
  CheckWindows(::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) != 0);
  bytes.resize(read);
  return bytes;
}

}  // namespace tavio::console
