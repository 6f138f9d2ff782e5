#include "development/storage/Files.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "development/storage/Storage.h"
#include "foundation/values/Error.h"

namespace tavio::development {

Text FolderWithin(const Text& name) {
  const Text folder = StorageFolder() + name;
  if (!CreateDirectoryW(folder.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
    throw Error(HRESULT_FROM_WIN32(GetLastError()), L"DevPlatform", L"不能建立文件夹 " + folder);
  }
  return folder + L'\\';
}

void WriteFile(const Text& path, std::string_view bytes) {
  std::FILE* file = _wfopen(path.c_str(), L"wb");
  const bool written = file && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  const bool closed = file && std::fclose(file) == 0;
  if (!written || !closed) throw Error(E_FAIL, L"DevPlatform", L"不能写入文件 " + path);
}

Text AsFileName(Text name) {
  static constexpr TextView kForbidden = L"\\/:*?\"<>|";
  std::replace_if(
      name.begin(), name.end(), [](Char unit) { return unit < L' ' || kForbidden.find(unit) != TextView::npos; }, L'_');
  return name;
}

}  // namespace tavio::development
