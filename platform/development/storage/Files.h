#pragma once

#include <string>
#include <string_view>

#include "foundation/values/Text.h"

namespace tavio::development {

// Makes a folder and those above it that are missing. Raises Error if it cannot be made.
void MakeFolder(const Text& folder);

// A folder within the storage folder, made if it is missing; it ends with "\".
Text FolderWithin(const Text& name);

// Reads and writes a whole file; writing replaces one of that name. Each raises Error if it cannot be done.
std::string ReadWhole(const Text& path);
void WriteWhole(const Text& path, std::string_view bytes);

// `name` with what no file name may hold replaced by "_".
Text AsFileName(Text name);

}  // namespace tavio::development
