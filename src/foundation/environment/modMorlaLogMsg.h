#pragma once

#include <cstdint>

namespace tavio {

// Begin and end entries of operations in the platform's log component, MorlaLogMsg.Log. Failures are ignored. The
// component is created at most once per process, and let go for good once it says that it is not enabled.

// Whether an entry calls the component, which is foreign code.
bool IsLogCalled() noexcept;
// The handle of the new entry; 0 when logging is off.
std::int32_t LogStart(const wchar_t* label) noexcept;
void LogEnd(std::int32_t handle, std::int32_t outcome) noexcept;

}  // namespace tavio
