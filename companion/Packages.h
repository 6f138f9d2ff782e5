#pragma once

#include <nlohmann/json.hpp>

#include "companion/recorder/Secrets.h"
#include "foundation/values/CodePage.h"

namespace tavio::companion {

// Keeps the order of keys, as the packages do.
using Json = nlohmann::ordered_json;

// What was recorded, as JSON for those who read it: a record is an object, a list an array, dates are ISO texts, bytes
// the text they hold in the system's code page. Secrets are masked.
Json ToJson(const Snapshot& snapshot, const Secrets& secrets);

// JSON as packages: an object is a Dictionary, an array a Vector; null is the empty value.
Value ToPackage(const Json& json);

inline std::string Utf8(TextView text) { return ToUtf8(text); }
// As text to be read, two blanks per level. Never raises for what is no text.
Text ToText(const Json& json);

}  // namespace tavio::companion
