#include "delivery/MessageFile.h"

#include <filesystem>
#include <fstream>
#include <string>

#include "foundation/AppFolder.h"
#include "foundation/Component.h"
#include "foundation/Error.h"
#include "foundation/Operation.h"
#include "foundation/ResText.h"

namespace tavio {
namespace {

std::string InSystemCodePage(TextView text) {
  const auto units = static_cast<int>(text.size());
  if (units == 0) return {};
  const int length = WideCharToMultiByte(CP_ACP, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_ACP, 0, text.data(), units, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

Error FileError(TextView what, const Text& path) {
  return Error(HRESULT_FROM_WIN32(ERROR_WRITE_FAULT), Text(), LoadResText(what) + L" " + path);
}

}  // namespace

MessageFile::MessageFile(const Text& number)
    : path_(GetAppFolder() + L"temp" + Value(Value(TextView(number)).ToSingle()).ToText() + L".tmp") {}

void MessageFile::WriteTempFile(TextView text) const {
  std::ofstream file(std::filesystem::path(path_), std::ios::binary | std::ios::trunc);
  file << InSystemCodePage(text) << "\r\n";
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
