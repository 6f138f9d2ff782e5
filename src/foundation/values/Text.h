#pragma once

#include <string>
#include <string_view>

namespace tavio {

// The 16-bit text unit of the platform. The rules that need no platform are built on Linux too, where wchar_t is wider.
#ifdef _WIN32
using Char = wchar_t;
#else
using Char = char16_t;
#endif

using Text = std::basic_string<Char>;
using TextView = std::basic_string_view<Char>;

// `text` without leading and trailing blanks. Only the blank counts, not tabs or line ends.
constexpr TextView TrimBlanks(TextView text) noexcept {
  const auto first = text.find_first_not_of(Char{' '});
  if (first == TextView::npos) return {};
  return text.substr(first, text.find_last_not_of(Char{' '}) - first + 1);
}

// `text` in upper case, unit by unit: the length never changes.
Text ToUpper(TextView text);

}  // namespace tavio
