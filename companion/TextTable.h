#pragma once

#include <vector>

#include "foundation/values/Text.h"

namespace tavio::companion {

using Cells = std::vector<Text>;

// `text` without control characters, which would move a console's cursor; of several lines only if those are kept.
enum class Lines { kKept, kJoined };
Text Plain(TextView text, Lines lines);

// Rows under each other in columns, for consoles: characters of East Asia take two columns of it, and a cell has one
// line.
Text TextTable(const std::vector<Cells>& rows);

}  // namespace tavio::companion
