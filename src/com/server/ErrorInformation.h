#pragma once

#include <windows.h>

#include "foundation/values/Text.h"

namespace tavio::com {

// Sets the thread's error information, in finished words, for a member of the interface that fails, and answers the
// result of the member: `number`, or E_FAIL if that is no failure, since components raise small numbers too.
HRESULT Raise(REFIID iid, HRESULT number, const Text& source, const Text& description) noexcept;

}  // namespace tavio::com
