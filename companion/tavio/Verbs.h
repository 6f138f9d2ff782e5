#pragma once

#include <CLI/CLI.hpp>

#include "companion/tavio/Session.h"

namespace tavio {

// What every verb is given and sets.
struct Run {
  bool json = false;
  int exitCode = kFine;
};

// Each adds one verb with its options to the program.
void AddPreviewVerb(CLI::App& app, Run& run);

}  // namespace tavio
