#pragma once

#include "companion/preview/Result.h"
#include "foundation/packages/Component.h"

namespace tavio::companion {

// The names in brackets in a text, each once, in order.
std::vector<Text> NamesIn(TextView text);

// `text` as the message object translates it.
enum class Translation { kCaptions, kValues };
Text Translate(const Component& message, const Text& text, Translation translation);

// Every variable of the message, those used in `text` first, and names in `text` that are none. `tableInfo` tells the
// bill's fields from the host's own variables; it may be unset.
std::vector<Variable> VariablesOf(const Component& message, const Text& text, const Dictionary& tableInfo);

// The characters of `text` that the system's code page cannot hold, each once: "€ (U+20AC)".
std::vector<Text> LostIn(TextView text);

}  // namespace tavio::companion
