#pragma once

#include <string_view>

#include "foundation/values/Text.h"

namespace tavio::console {

// Texts to the standard streams: Unicode to a console, UTF-8 to files and pipes. Raises Error if the output takes no
// more; the error stream has nobody to tell.
void Print(TextView text);
void PrintError(TextView text);
// Whether somebody watches the error stream.
bool HasErrorConsole();
// The line that the user types, without its end; empty at the end of the input.
Text ReadLine();

// Writes a text to a file as UTF-8. Raises Error if it cannot.
void WriteFile(const Text& path, TextView text);
// Raises Error if the file cannot be read.
std::string ReadFile(const Text& path);

}  // namespace tavio::console
