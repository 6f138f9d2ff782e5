#pragma once

#include <cstdint>

#include "foundation/packages/Dictionary.h"

// The fields of records as typed values. A database null is read as nothing: 0, false, "" or no package. Anything else
// that does not convert raises Error.
namespace tavio {

// Read with `Value`: the field is there, or absent ones count as nothing.
inline std::int32_t NumberAt(const Dictionary& record, const Key& key) { return record.Get(key)->OrEmpty().ToInt32(); }

// Read with `GetValue` and its default.
inline std::int32_t NumberAt(const Dictionary& record, const Key& key, std::int32_t fallback) {
  return record.GetValue(key, Value(fallback))->OrEmpty().ToInt32();
}
inline bool FlagAt(const Dictionary& record, const Key& key) {
  return record.GetValue(key, Value(false))->OrEmpty().ToBool();
}
inline Text TextAt(const Dictionary& record, const Key& key) { return record.GetValue(key)->OrEmpty().ToText(); }
// Unset if the field is absent or holds no object.
inline Dictionary PackageAt(const Dictionary& record, const Key& key) { return Dictionary(*record.GetValue(key)); }

}  // namespace tavio
