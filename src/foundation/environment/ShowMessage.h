#pragma once

#include <cstdint>

#include "foundation/values/Error.h"

namespace tavio {

inline constexpr wchar_t kTitle[] = L"Morla提示";
inline constexpr std::int32_t kWarning = 48;

// A modal message box over the host's active window; answers the button chosen. `style` are the flags of a Windows
// message box. The title "Morla提示" is localised, any other is shown as it is.
std::int32_t ShowMessage(TextView text, std::int32_t style, TextView title);

// Tells the user one of the system's own Chinese texts, localised, in the warning box.
void Warn(TextView text);

// What the user reads of a failure: its text localised, and its detail.
Text Describe(const Error& error);

// The report of a failed operation: `label` (class identity and operation) and a line break, unless it is empty, and
// the description.
void ReportFailure(TextView label, const Error& error);

}  // namespace tavio
