#pragma once

#include <windows.h>

#include "foundation/values/Text.h"

namespace tavio {

// The module (DLL or program) that this code is part of.
HMODULE OwnModule() noexcept;

// The full path of the component's own file.
Text ModuleFile();

// The folder of the component's own file, always ending with "\".
Text GetAppFolder();

}  // namespace tavio
