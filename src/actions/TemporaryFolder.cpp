#include "actions/TemporaryFolder.h"

#include <memory>

#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"

namespace tavio {
namespace {

void CheckWindows(BOOL done) {
  if (!done) throw Error::FromHresult(HRESULT_FROM_WIN32(GetLastError()));
}

bool IsFolder(const Text& path) noexcept {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

struct CloseFile {
  void operator()(HANDLE file) const noexcept { CloseHandle(file); }
};

}  // namespace

TemporaryFolder::TemporaryFolder() : path_(GetAppFolder() + L"temp") {
  if (!IsFolder(path_)) CheckWindows(CreateDirectoryW(path_.c_str(), nullptr));
  CheckWindows(SetCurrentDirectoryW((path_ + L"\\").c_str()));
  Empty();
}

void TemporaryFolder::Empty() const {
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirstFileW((path_ + L"\\*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) DeleteFileW((path_ + L"\\" + entry.cFileName).c_str());
  } while (FindNextFileW(search, &entry));
  FindClose(search);
}

void WriteFileBytes(const Text& path, const Value& bytes) {
  if (!WriteThroughStream(path, bytes)) WriteDirectly(path, bytes);
}

void WriteDirectly(const Text& path, const Value& bytes) {
  const auto content = bytes.ToBytes();
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  CheckWindows(file != INVALID_HANDLE_VALUE);
  const std::unique_ptr<void, CloseFile> closer(file);
  DWORD written = 0;
  CheckWindows(WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr));
}

}  // namespace tavio
