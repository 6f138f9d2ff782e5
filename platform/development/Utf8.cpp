#include "development/Utf8.h"

#include <windows.h>

namespace tavio::development {

std::string ToUtf8(TextView text) {
  const int units = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), units, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

Text FromUtf8(std::string_view bytes) {
  const int count = static_cast<int>(bytes.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), count, nullptr, 0);
  Text text(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, bytes.data(), count, text.data(), size);
  return text;
}

}  // namespace tavio::development
