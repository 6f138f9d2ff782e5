#pragma once

#include <string>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio {

// Runs a VBScript or JScript file in this process, with a WScript that has Echo, Arguments, Quit, CreateObject,
// ScriptFullName and Sleep. What it prints goes to the error stream. Answers its exit code; raises Error with file, line
// and column if it fails. (A script under "On Error Resume Next" goes on behind Quit to its end, and prints no more.)
int RunScript(const Text& file, const std::vector<Text>& arguments);

}  // namespace tavio
