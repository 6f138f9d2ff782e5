#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "foundation/values/Text.h"

namespace tavio {

// Texts in a code page of Windows (CP_ACP the system's, CP_UTF8, 936, ...). What the target cannot hold becomes its
// replacement character. `flags` are those of the system's own conversion; `replaced`, if given, tells whether
// anything was replaced, and must not be given for UTF-8.
std::string ToCodePage(UINT codePage, TextView text, DWORD flags = 0, bool* replaced = nullptr);
Text FromCodePage(UINT codePage, std::string_view bytes);

inline std::string ToUtf8(TextView text) { return ToCodePage(CP_UTF8, text); }
inline Text FromUtf8(std::string_view bytes) { return FromCodePage(CP_UTF8, bytes); }

}  // namespace tavio
