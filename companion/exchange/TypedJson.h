#pragma once

#include "companion/Packages.h"

namespace tavio::companion {

// Packages that are nested deeper are not written.
inline constexpr int kDeepestPackage = 32;

// Packages as JSON that can become the same packages again. What JSON does not tell apart is an object of one member:
// {"$i2": 5} a 16-bit integer, {"$date": "2024-03-05 08:30:00"} a date, {"$decimal": "1.23"} money and decimals,
// {"$empty": 0} nothing stored, {"$object": 0} an unset reference.
// Raises Error for what cannot be written (other objects, arrays, packages nested without end).
Json ToTypedJson(const Value& value);
inline Json ToTypedJson(const Dictionary& record) { return ToTypedJson(record.AsValue()); }

// Raises Error for an object that is marked in another way, and for what does not fit its type.
Value FromTypedJson(const Json& json);

}  // namespace tavio::companion
