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

// Writes all of `rest` in pieces: older consoles refuse many characters at once. Answers whether it could.
constexpr std::size_t kPiece = 8192;

template <class View, class WritePiece>
bool WriteAll(View rest, WritePiece&& writePiece) {
  while (!rest.empty()) {
    DWORD written = 0;
    const auto piece = rest.substr(0, kPiece);
    if (!writePiece(piece.data(), static_cast<DWORD>(piece.size()), &written) || written == 0) return false;
    rest.remove_prefix(written);
  }
  return true;
}

bool WriteBytes(HANDLE stream, std::string_view bytes) {
  return WriteAll(bytes, [&](const char* data, DWORD size, DWORD* written) {
    return ::WriteFile(stream, data, size, written, nullptr) != 0;
  });
}

bool Write(DWORD which, TextView text) {
  const HANDLE stream = GetStdHandle(which);
  if (!IsConsole(stream)) return WriteBytes(stream, ToUtf8(text));
  return WriteAll(text, [&](const wchar_t* data, DWORD size, DWORD* written) {
    return WriteConsoleW(stream, data, size, written, nullptr) != 0;
  });
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

[[noreturn]] void Raise(const Text& what) {
  const DWORD failure = GetLastError();
  throw Error(HRESULT_FROM_WIN32(failure), L"tavio", what + L": " + WordsFor(failure));
}

FileHandle Open(const Text& path, DWORD access, DWORD how) {
  FileHandle file(CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) Raise(path);
  return file;
}

}  // namespace

void Print(TextView text) {
  if (!Write(STD_OUTPUT_HANDLE, text)) Raise(L"output");
}

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
  if (!WriteBytes(file.Get(), ToUtf8(text))) Raise(path);
}

std::string ReadFile(const Text& path) {
  const auto file = Open(path, GENERIC_READ, OPEN_EXISTING);
  std::string bytes;
  char piece[kPiece];
  for (DWORD read = 0;; bytes.append(piece, read)) {
    const bool done = ::ReadFile(file.Get(), piece, sizeof piece, &read, nullptr) != 0;
    if (!done && GetLastError() != ERROR_BROKEN_PIPE) Raise(path);
    if (!done || read == 0) return bytes;
  }
}

}  // namespace tavio::console
