#pragma once

#include <vector>

#include "foundation/values/Text.h"

namespace tavio::companion {

using Cells = std::vector<Text>;

// Rows under each other in columns, for consoles: characters of East Asia take two columns of it.
Text TextTable(const std::vector<Cells>& rows);

}  // namespace tavio::companion
