#pragma once

#include <string>
#include <vector>

#include "foundation/packages/Vector.h"

namespace tavio::companion {

// A value as it was at one moment, with what its packages held: nobody can change it afterwards.
struct Snapshot {
  enum class Kind { kValue, kRecord, kList, kObject };
  struct Entry;

  Kind kind = Kind::kValue;
  Value value;  // of kValue; an array of bytes or numbers whole
  std::vector<Entry> entries;
  std::int32_t count = 0;  // of a package: its entries, those that were left out too

  // Copies at most `room` entries of packages, nested ones included. Never raises: what cannot be read is left out.
  static Snapshot Of(const VARIANT& variant, std::int32_t room) noexcept;

  // The entry of a record; null if there is none.
  const Snapshot* Find(TextView key) const noexcept;
  // The text of a value; empty for anything else.
  Text ToText() const;
};

struct Snapshot::Entry {
  Text key;  // empty in a list
  Snapshot value;
};

}  // namespace tavio::companion
