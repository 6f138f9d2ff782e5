#include "delivery/MessageFile.h"

#include <string>

#include "foundation/environment/Operation.h"
#include "foundation/packages/Component.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"
#include "foundation/values/SystemHandle.h"

namespace tavio {
namespace {

Error FileError(TextView what, const Text& path) {
  return Error::System(HRESULT_FROM_WIN32(ERROR_WRITE_FAULT), what, path);
}

FileHandle Open(const Text& path, DWORD access, DWORD disposition) noexcept {
  constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE;
  return FileHandle(CreateFileW(path.c_str(), access, kShared, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace

MessageFile::MessageFile(const Text& number)
    : path_(GetAppFolder() + L"temp" + Value(Value(TextView(number)).ToSingle()).ToText() + L".tmp") {}

void MessageFile::WriteTempFile(TextView text) const {
  const auto bytes = ToCodePage(CP_ACP, text) + "\r\n";
  const auto file = Open(path_, GENERIC_WRITE, CREATE_ALWAYS);
  DWORD written = 0;
  const bool done = file && WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  if (!done || written != bytes.size()) throw FileError(L"不能写文件", path_);
}

std::int32_t MessageFile::GetTempFileSize() const noexcept {
  constexpr Labels kLabels{.report = kDescriptionOnly};
  return Operation<std::int32_t>(kLabels, [&](std::int32_t& size) {
    const auto files = Component::Create(L"Scripting.FileSystemObject");
    size = Component(files.Call(L"GetFile", path_).ToObject()).Read(L"Size").ToInt32();
  });
}

std::vector<std::byte> MessageFile::ReadTempFile(std::int32_t last) const {
  std::vector<std::byte> bytes(static_cast<std::size_t>(last) + 1);
  const auto file = Open(path_, GENERIC_READ, OPEN_EXISTING);
  DWORD read = 0;
  if (!file || !ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
    throw FileError(L"不能读文件", path_);
  }
  return bytes;
}

void MessageFile::Delete() const {
  if (!DeleteFileW(path_.c_str())) throw FileError(L"不能删除文件", path_);
}

}  // namespace tavio
