#pragma once

#include <nlohmann/json.hpp>
#include <utility>

#include "companion/recorder/Secrets.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"

namespace tavio::companion {

// Keeps the order of keys, as the packages do.
using Json = nlohmann::ordered_json;

// What was recorded, as JSON for those who read it: a record is an object, a list an array, dates are ISO texts, bytes
// the text they hold in the system's code page. Secrets are masked.
Json ToJson(const Snapshot& snapshot, const Secrets& secrets);

// Raises Error for what is no integer, or one that does not fit.
template <class Integer>
Value ReadInteger(const Json& json) {
  if (!json.is_number_integer()) throw Error::TypeMismatch();
  const bool fits = json.is_number_unsigned() ? std::in_range<Integer>(json.get<std::uint64_t>())
                                              : std::in_range<Integer>(json.get<std::int64_t>());
  if (!fits) throw Error::Overflow();
  return Value(json.get<Integer>());
}

// JSON as packages: an object is a Dictionary, an array a Vector; null is the empty value.
Value ToPackage(const Json& json);

inline std::string Utf8(TextView text) { return ToUtf8(text); }
// As text to be read, two blanks per level. Never raises for what is no text.
Text ToText(const Json& json);

}  // namespace tavio::companion
