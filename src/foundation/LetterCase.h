#pragma once

#include "foundation/Text.h"

namespace tavio {

// `text` in upper case, unit by unit: the length never changes.
Text ToUpper(TextView text);

}  // namespace tavio
