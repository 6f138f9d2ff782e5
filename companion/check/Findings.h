#pragma once

#include "companion/Words.h"
#include "companion/check/Subject.h"
#include "companion/preview/People.h"

namespace tavio::companion {

enum class Severity { kError, kWarning, kNote };

struct Finding {
  const char* rule;
  Severity severity = Severity::kWarning;
  Text action;
  std::int32_t scenario = 0;  // the mask of the message; 0 if the action or the bill type itself is meant
  Text place;                 // a field of the message, a field of the bill
  Text what;
  Text todo;
};

using Findings = std::vector<Finding>;

// What is wrong within the actions and messages themselves. `users` are asked of the platform's tables.
Findings Check(const Subject& subject, Users& users);

// What an older state had and the present one lacks. A field that vanished while one of the same caption came up on the
// same page has been renamed: every message that uses it is named, with its text under the new name.
Findings CheckAgainst(const Subject& older, const Subject& present);

// The name among `names` that `name` was probably meant to be; empty if none is near.
Text Nearest(const Text& name, const std::vector<Text>& names);

Json ToJson(const Findings& findings);
Text ToReadableText(const Findings& findings);

}  // namespace tavio::companion
