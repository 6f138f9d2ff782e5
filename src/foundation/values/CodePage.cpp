#include "foundation/values/CodePage.h"

namespace tavio {

std::string ToCodePage(UINT codePage, TextView text, DWORD flags, bool* replaced) {
  const auto units = static_cast<int>(text.size());
  BOOL usedDefault = FALSE;
  BOOL* const used = replaced ? &usedDefault : nullptr;
  const auto convert = [&](char* target, int room) {
    return WideCharToMultiByte(codePage, flags, text.data(), units, target, room, nullptr, used);
  };
  std::string bytes(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(bytes.data(), static_cast<int>(bytes.size()));
  if (replaced) *replaced = usedDefault != FALSE;
  return bytes;
}

Text FromCodePage(UINT codePage, std::string_view bytes) {
  const auto count = static_cast<int>(bytes.size());
  Text text(static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, bytes.data(), count, nullptr, 0)), L'\0');
  MultiByteToWideChar(codePage, 0, bytes.data(), count, text.data(), static_cast<int>(text.size()));
  return text;
}

}  // namespace tavio
