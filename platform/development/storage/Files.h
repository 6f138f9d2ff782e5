#pragma once

#include <string_view>

#include "foundation/values/Text.h"

namespace tavio::development {

// A folder within the storage folder, made where it is missing; it ends with "\".
Text FolderWithin(const Text& name);

// Writes a whole file, replacing one of that name. Raises Error where it cannot be written.
void WriteFile(const Text& path, std::string_view bytes);

// `name` with what no file name may hold replaced by "_".
Text AsFileName(Text name);

}  // namespace tavio::development
