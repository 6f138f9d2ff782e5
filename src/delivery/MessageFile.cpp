#include "delivery/MessageFile.h"

#include <filesystem>
#include <fstream>
#include <string>

#include "foundation/environment/Operation.h"
#include "foundation/packages/Component.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"

namespace tavio {
namespace {

Error FileError(TextView what, const Text& path) {
  return Error::System(HRESULT_FROM_WIN32(ERROR_WRITE_FAULT), what, path);
}

}  // namespace

MessageFile::MessageFile(const Text& number)
    : path_(GetAppFolder() + L"temp" + Value(Value(TextView(number)).ToSingle()).ToText() + L".tmp") {}

void MessageFile::WriteTempFile(TextView text) const {
  std::ofstream file(std::filesystem::path(path_), std::ios::binary | std::ios::trunc);
  file << ToCodePage(CP_ACP, text) << "\r\n";
  file.close();
  if (!file) throw FileError(L"不能写文件", path_);
}

std::int32_t MessageFile::GetTempFileSize() const noexcept {
  return Operation<std::int32_t>({.report = kDescriptionOnly}, [&](std::int32_t& size) {
    const auto files = Component::Create(L"Scripting.FileSystemObject");
    size = Component(files.Call(L"GetFile", path_).ToObject()).Read(L"Size").ToInt32();
  });
}

std::vector<std::byte> MessageFile::ReadTempFile(std::int32_t last) const {
  std::ifstream file(std::filesystem::path(path_), std::ios::binary);
  if (!file) throw FileError(L"不能读文件", path_);
  std::vector<std::byte> bytes(static_cast<std::size_t>(last) + 1);
  file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

void MessageFile::Delete() const {
  if (!DeleteFileW(path_.c_str())) throw FileError(L"不能删除文件", path_);
}

}  // namespace tavio
