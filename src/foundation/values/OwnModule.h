#pragma once

#include <windows.h>

#include "foundation/values/Text.h"

namespace tavio {

// The module (DLL or program) that this code is part of.
HMODULE OwnModule() noexcept;

// The full path of the component's own file. Raises Error if the system does not tell it.
Text ModuleFile();

// The folder of that file, always ending with "\".
Text GetAppFolder();

}  // namespace tavio
