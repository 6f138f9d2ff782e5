#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "foundation/packages/Dictionary.h"
#include "foundation/packages/Vector.h"

namespace tavio {

// A walk over the positions 1 to Count of a container, as a range. The container is held until the walk ends, and the
// count is the one of its beginning: positions that have gone meanwhile read as empty.
//   for (const auto& entry : Entries(record)) ...       keys and values
//   for (const auto& action : Records(list)) ...        the items as records
// The walks in 16 bits raise the overflow error, before their first step, if there are more entries than a 16-bit
// position can count: hosts rely on the limit being reported instead of on a walk that ends half-way.

inline std::int32_t CountedIn16Bits(std::int32_t count) {
  if (count > std::numeric_limits<std::int16_t>::max()) throw Error::Overflow();
  return count;
}

// `Held` is what the positions are read from, by its operator(); if it has a Next, that tells the position to go on from.
template <class Held>
class Walk {
 public:
  class Iterator {
   public:
    Iterator(const Held& held, std::int32_t position) noexcept : held_(&held), position_(position) {}
    decltype(auto) operator*() const { return (*held_)(position_); }
    Iterator& operator++() {
      position_ = From(*held_, position_ + 1);
      return *this;
    }
    bool operator!=(const Iterator& end) const noexcept { return position_ != end.position_; }

   private:
    const Held* held_;
    std::int32_t position_;
  };

  Walk(Held held, std::int32_t count) noexcept : held_(std::move(held)), count_(std::min(count, kMost)) {}
  Iterator begin() const { return {held_, From(held_, 1)}; }
  Iterator end() const noexcept { return {held_, count_ > 0 ? count_ + 1 : 1}; }

 private:
  // One position is needed behind the last.
  static constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max() - 1;

  static std::int32_t From(const Held& held, std::int32_t position) {
    if constexpr (requires { held.Next(position); }) position = held.Next(position);
    return position;
  }

  Held held_;
  std::int32_t count_;
};

struct EntryAt {
  EntryReader reader;
  Entry operator()(std::int32_t position) const { return Entry(reader, position); }
};
struct ItemAt {
  Vector list;
  StoredValue operator()(std::int32_t position) const { return list.Item(position); }
};
struct RecordAt {
  Vector list;
  Dictionary operator()(std::int32_t position) const { return list.Record(position); }
};

// Leaves out the records of which it is certain that their `field` is another text than `text`.
struct EntryThatMayHold {
  EntryReader reader;
  const Key& field;
  TextView text;
  std::int32_t count;

  Entry operator()(std::int32_t position) const { return Entry(reader, position); }
  std::int32_t Next(std::int32_t position) const {
    return reader.Record().SkipOtherTexts(position, count, field, text);
  }
};

inline Walk<EntryAt> Entries(const Dictionary& record) { return {{EntryReader(record)}, record.Count()}; }
inline Walk<EntryAt> EntriesIn16Bits(const Dictionary& record) {
  return {{EntryReader(record)}, CountedIn16Bits(record.Count())};
}
// `field` and `text` must outlive the walk.
inline Walk<EntryThatMayHold> EntriesIn16BitsThatMayHold(const Dictionary& record, const Key& field, TextView text) {
  const auto count = CountedIn16Bits(record.Count());
  return {{EntryReader(record), field, text, count}, count};
}
inline Walk<ItemAt> Items(const Vector& list) { return {{list}, list.Count()}; }
inline Walk<RecordAt> Records(const Vector& list) { return {{list}, list.Count()}; }
inline Walk<RecordAt> RecordsIn16Bits(const Vector& list) { return {{list}, CountedIn16Bits(list.Count())}; }

}  // namespace tavio
