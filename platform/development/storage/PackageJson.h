#pragma once

#include <nlohmann/json.hpp>

#include "foundation/packages/Vector.h"

namespace tavio::development {

// Keeps the order of keys, as the packages do.
using Json = nlohmann::ordered_json;

// A value with everything nested in it. A Dictionary is an object, a Vector an array, a text, a 32-bit integer, a
// Boolean, a double and a database null are themselves. What JSON does not tell apart is an object of one member:
// {"$i2": 5} a 16-bit integer, {"$date": "2024-03-05 08:30:00"} a date, {"$r4": 1.5} a single, {"$decimal": "1.23"}
// money and decimals, {"$empty": 0} nothing stored, {"$object": 0} an unset reference, {"$record": {...}} a Dictionary
// that would look like one of these. Raises Error for what cannot be stored (other objects, arrays, packages nested
// without end).
Json ToJson(const Value& value);
inline Json ToJson(const Dictionary& record) { return ToJson(record.AsValue()); }

// Packages are made new. Raises Error for a number that does not fit its type, and for objects of one member that begin
// with "$" and are none of the above.
Value FromJson(const Json& json);

// As stored in a column.
Text ToColumn(const Json& json);
Json FromColumn(const Value& cell);

// Raises Error for an integer that nothing here can hold, and what the parser raises for what is no JSON.
Json ParseJson(std::string_view text);

}  // namespace tavio::development
