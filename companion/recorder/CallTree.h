#pragma once

#include "companion/Packages.h"

namespace tavio::companion {

// What was recorded, for readers: secrets are masked, and calls of the log itself are left out.

// The calls in order: FComponent, FMember, FKind ("create", "call", "assign"), FEntry, Arguments, Answer, WrittenBack
// (only where an argument was changed), FResult, FDescription, FPassed, FBroken, FBegin, FEnd (milliseconds).
Json CallsOf(const Recording& recording);
// The log entries in order of their beginning: FNumber, FParent, FLabel, FOutcome (null while open), FBegin, FEnd.
Json EntriesOf(const Recording& recording);
// One line per entry and call, indented by entry.
Text TreeOf(const Recording& recording);

}  // namespace tavio::companion
