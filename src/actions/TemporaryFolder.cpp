#include "actions/TemporaryFolder.h"

#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"
#include "foundation/values/SystemHandle.h"

namespace tavio {
namespace {

bool IsFolder(const Text& path) noexcept {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

void DeleteFilesIn(const Text& folder) {
  WIN32_FIND_DATAW entry;
  const FindHandle search(FindFirstFileW((folder + L"\\*").c_str(), &entry));
  if (!search) return;
  do {
    if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) DeleteFileW((folder + L"\\" + entry.cFileName).c_str());
  } while (FindNextFileW(search.Get(), &entry));
}

}  // namespace

Text PrepareTemporaryFolder() {
  const Text folder = GetAppFolder() + L"temp";
  if (!IsFolder(folder)) CheckWindows(CreateDirectoryW(folder.c_str(), nullptr));
  CheckWindows(SetCurrentDirectoryW((folder + L"\\").c_str()));
  DeleteFilesIn(folder);
  return folder;
}

void WriteFileBytes(const Text& path, const Value& bytes) {
  if (!WriteThroughStream(path, bytes)) WriteDirectly(path, bytes);
}

void WriteDirectly(const Text& path, const Value& bytes) {
  const auto content = bytes.ToBytes();
  const FileHandle file(
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  CheckWindows(static_cast<bool>(file));
  DWORD written = 0;
  CheckWindows(WriteFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr));
}

}  // namespace tavio
