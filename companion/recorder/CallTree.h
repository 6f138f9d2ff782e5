#pragma once

#include "companion/Packages.h"

namespace tavio::companion {

// What was recorded, for readers: secrets are masked, and calls of the log itself are left out.

// The calls in order: FComponent, FMember, FKind ("create", "call", "assign"), FEntry, Arguments, Answer, WrittenBack
// (only if an argument was changed), FResult, FDescription, FPassed, FBroken, FBegin, FEnd (milliseconds).
Json CallsOf(const Recording& recording);
// The log entries in order of their beginning: FNumber, FParent, FLabel, FOutcome (null while open), FBegin, FEnd.
Json EntriesOf(const Recording& recording);
// One line per entry and call, indented by entry.
Text TreeOf(const Recording& recording);
// The same as one page.
Text ToPage(const Recording& recording);

// A line of the tree: an entry or a call.
struct TreeLine {
  int depth = 0;
  const LogEntry* entry = nullptr;
  const Call* call = nullptr;
};

// They refer to `recording`.
std::vector<TreeLine> LinesOf(const Recording& recording);
double DurationOf(const TreeLine& line) noexcept;  // milliseconds; 0 of an entry that was never ended
Text NameOf(const TreeLine& line);

}  // namespace tavio::companion
