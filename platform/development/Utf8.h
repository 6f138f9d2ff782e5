#pragma once

#include <string>
#include <string_view>

#include "foundation/Text.h"

namespace tavio::development {

// What is not valid in one form becomes the replacement character in the other.
std::string ToUtf8(TextView text);
Text FromUtf8(std::string_view bytes);

}  // namespace tavio::development
