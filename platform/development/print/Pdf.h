#pragma once

#include <string>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio::development {

// A PDF document of lines of text under a title, A4 upright, as many pages as it takes. Texts are in the standard
// Chinese font that every reader brings or replaces, so none is embedded; characters beyond its 16-bit encoding become
// "?".
std::string MakePdf(const Text& title, const std::vector<Text>& lines);

}  // namespace tavio::development
