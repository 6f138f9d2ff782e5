#pragma once

#include <CLI/CLI.hpp>

#include "companion/tavio/Session.h"

namespace tavio {

// What every verb is given and sets.
struct Run {
  bool json = false;
  int exitCode = kFine;
};

// Each adds verbs with their options to the program.
void AddMessageVerbs(CLI::App& app, Run& run);  // preview, send
void AddListingVerbs(CLI::App& app, Run& run);  // actions, scenarios, inbox, outbox

void AddDesignVerbs(CLI::App& app, Run& run);  // check, export, import
void AddDataVerbs(CLI::App& app, Run& run);    // data describe, export, import, reset
void AddTraceVerb(CLI::App& app, Run& run);

}  // namespace tavio
