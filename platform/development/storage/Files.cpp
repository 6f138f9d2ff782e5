#include "development/storage/Files.h"

#include <windows.h>

#include <algorithm>

#include "development/storage/Storage.h"
#include "foundation/values/Error.h"
#include "foundation/values/SystemHandle.h"

namespace tavio::development {
namespace {

[[noreturn]] void Fail(TextView what, const Text& path) {
  throw Error(HRESULT_FROM_WIN32(GetLastError()), L"DevPlatform", Text(what) + path);
}

bool IsFolder(const Text& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace

void MakeFolder(const Text& folder) {
  for (std::size_t end = 0; end != Text::npos && !IsFolder(folder);) {
    end = folder.find_first_of(L"\\/", end + 1);
    CreateDirectoryW(folder.substr(0, end).c_str(), nullptr);
  }
  if (!IsFolder(folder)) Fail(L"不能建立文件夹 ", folder);
}

Text FolderWithin(const Text& name) {
  const Text folder = StorageFolder() + name + L'\\';
  MakeFolder(folder);
  return folder;
}

std::string ReadWhole(const Text& path) {
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  std::string bytes;
  char piece[4096];
  DWORD read = 0;
  do {
    if (!file || !ReadFile(file.Get(), piece, sizeof piece, &read, nullptr)) Fail(L"不能读取文件 ", path);
    bytes.append(piece, read);
  } while (read > 0);
  return bytes;
}

void WriteWhole(const Text& path, std::string_view bytes) {
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  const auto size = static_cast<DWORD>(bytes.size());
  DWORD written = 0;
  if (!file || !WriteFile(file.Get(), bytes.data(), size, &written, nullptr) || written != size) {
    Fail(L"不能写入文件 ", path);
  }
}

Text AsFileName(Text name) {
  static constexpr TextView kForbidden = L"\\/:*?\"<>|";
  std::replace_if(
      name.begin(), name.end(), [](Char unit) { return unit < L' ' || kForbidden.find(unit) != TextView::npos; }, L'_');
  return name;
}

}  // namespace tavio::development
