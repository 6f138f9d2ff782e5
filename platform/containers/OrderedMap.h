#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "containers/InternedKey.h"

namespace tavio::vexo {

// Entries in the order of their insertion, reached by position (from 1) and by exact key, both in constant time.
//
// A removed entry leaves a hole, so that nothing moves: holes are closed by a later change, never by a read. What Find
// and At answer therefore holds until the map is changed. Positions before the first hole and after the last one are
// computed, which covers walks that remove as they go, in either direction; for those between, a list of positions is
// made at need.
//
// Most maps are records of a few fields, read by the thousand, so the first entries lie in the map itself, and what only
// larger maps need is made when they need it.
//
// Values that leave the map are handed to the caller, who destroys them when the map is whole again: what they hold may
// call back.
template <class V>
class OrderedMap {
 public:
  class Entry {
   public:
    Entry() noexcept = default;
    Entry(InternedKey key, V value) noexcept : key_(std::move(key)), value_(std::move(value)) {}

    const InternedKey& Key() const noexcept { return key_; }
    const V& Value() const noexcept { return value_; }

   private:
    friend class OrderedMap;

    bool Is(std::uint32_t hash, TextView key) const noexcept {
      return key_ && key_.Hash() == hash && SameText(key_.View(), key);
    }

    InternedKey key_;  // unset in a hole
    V value_{};
  };

  // Where a key lies in one map, as a guess for others: it holds as long as no map is changed.
  struct Place {
    std::size_t index = 0;
    const Char* key = nullptr;  // its shared text
  };

  std::size_t Count() const noexcept { return entries_.Size() - holes_; }

  // Null if the key is absent.
  const V* Find(TextView key) const noexcept { return ValueAt(IndexOf(HashOf(key), key)); }

  // The same of one key in many maps: looks at `place` first, and keeps it for the next.
  const V* FindNear(Place& place, std::uint32_t hash, TextView key) const noexcept {
    if (place.key && place.index < entries_.Size() && entries_[place.index].key_.Get() == place.key) {
      return &entries_[place.index].value_;
    }
    const auto index = IndexOf(hash, key);
    if (index != kNone) place = {index, entries_[index].key_.Get()};
    return ValueAt(index);
  }

  // Null if there is no such position.
  const Entry* At(std::int64_t position) {
    if (position < 1 || position > static_cast<std::int64_t>(Count())) return nullptr;
    return &entries_[IndexAt(static_cast<std::size_t>(position - 1))];
  }

  // Adds at the end, or replaces in place and answers the value that was replaced.
  V Set(TextView key, V value) {
    const auto hash = HashOf(key);
    const auto index = IndexOf(hash, key);
    if (index != kNone) return std::exchange(entries_[index].value_, std::move(value));
    InternedKey fresh = entries_.Size() < kFields ? RecentKeys::Get(hash, key) : InternedKey(hash, key);
    MakeRoom();
    entries_.Append(Entry(std::move(fresh), std::move(value)));
    if (index_) Link(entries_.Size() - 1);
    DropPositions();
    return V();
  }

  // Answers the value that was removed, empty if the key is absent. Later entries move up one position.
  V Remove(TextView key) noexcept {
    const auto index = IndexOf(HashOf(key), key);
    if (index == kNone) return V();
    Entry& entry = entries_[index];
    entry.key_ = InternedKey();
    V removed = std::exchange(entry.value_, V());
    const auto hole = static_cast<std::uint32_t>(index);
    firstHole_ = holes_ ? std::min(firstHole_, hole) : hole;
    lastHole_ = holes_ ? std::max(lastHole_, hole) : hole;
    ++holes_;
    DropPositions();
    if (holes_ > kScanned && holes_ > Count()) CloseHoles();
    return removed;
  }

  // The same keys in the same order; `copy` makes each value from its original.
  template <class Copy>
  OrderedMap CloneWith(Copy&& copy) const {
    OrderedMap clone;
    clone.entries_.Reserve(Count());
    for (std::size_t i = 0; i < entries_.Size(); ++i) {
      const auto& entry = entries_[i];
      if (entry.key_) clone.entries_.Append(Entry(entry.key_, copy(entry.value_)));
    }
    if (index_) {
      clone.index_ = std::make_unique<Index>();
      clone.index_->slots.resize(index_->slots.size());
      clone.LinkAll();
    }
    return clone;
  }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  // Up to so many entries, comparing the keys one by one is quicker than an index.
  static constexpr std::size_t kScanned = 8;
  // Beyond so many entries, the keys are no names of fields, which other records have too.
  static constexpr std::size_t kFields = 64;

  // Entries by number; the first of them lie in the map.
  class Entries {
   public:
    std::size_t Size() const noexcept { return size_; }
    Entry& operator[](std::size_t i) noexcept { return i < kInside ? first_[i] : more_[i - kInside]; }
    const Entry& operator[](std::size_t i) const noexcept { return i < kInside ? first_[i] : more_[i - kInside]; }
    void Reserve(std::size_t size) {
      if (size > kInside) more_.reserve(size - kInside);
    }
    void Append(Entry entry) {
      if (size_ < kInside) {
        first_[size_] = std::move(entry);
      } else {
        more_.push_back(std::move(entry));
      }
      ++size_;
    }
    // Drops entries at the end, which must be holes.
    void Shrink(std::size_t size) noexcept {
      if (size_ > kInside) more_.resize(size > kInside ? size - kInside : 0);
      size_ = static_cast<std::uint32_t>(size);
    }

   private:
    static constexpr std::size_t kInside = 4;

    std::array<Entry, kInside> first_;
    std::uint32_t size_ = 0;
    std::vector<Entry> more_;
  };

  // What finds the entries of a larger map.
  struct Slot {
    std::uint32_t hash;
    std::uint32_t taken;  // the number of the entry, from 1; 0 if none
  };
  struct Index {
    std::vector<Slot> slots;
    std::vector<std::uint32_t> positions;  // position to number; made at need, dropped by every change
  };

  const V* ValueAt(std::size_t index) const noexcept { return index == kNone ? nullptr : &entries_[index].value_; }

  std::size_t IndexOf(std::uint32_t hash, TextView key) const noexcept {
    if (!index_) {
      for (std::size_t i = 0; i < entries_.Size(); ++i) {
        if (entries_[i].Is(hash, key)) return i;
      }
      return kNone;
    }
    const auto& slots = index_->slots;
    const std::size_t mask = slots.size() - 1;
    for (std::size_t probe = hash & mask; slots[probe].taken; probe = (probe + 1) & mask) {
      if (slots[probe].hash == hash && entries_[slots[probe].taken - 1].Is(hash, key)) return slots[probe].taken - 1;
    }
    return kNone;
  }

  std::size_t IndexAt(std::size_t ordinal) {
    if (holes_ == 0 || ordinal < firstHole_) return ordinal;
    if (ordinal + holes_ > lastHole_) return ordinal + holes_;
    if (!index_) return IndexByCounting(ordinal);
    if (index_->positions.empty()) ListPositions();
    return index_->positions[ordinal];
  }

  std::size_t IndexByCounting(std::size_t ordinal) const noexcept {
    std::size_t index = 0;
    for (;; ++index) {
      if (entries_[index].key_ && ordinal-- == 0) return index;
    }
  }

  void ListPositions() {
    index_->positions.reserve(Count());
    for (std::size_t i = 0; i < entries_.Size(); ++i) {
      if (entries_[i].key_) index_->positions.push_back(static_cast<std::uint32_t>(i));
    }
  }

  void DropPositions() noexcept {
    if (index_) index_->positions.clear();
  }

  // At most half of the slots are taken, holes included, so that a probe always ends.
  void MakeRoom() {
    const std::size_t wanted = entries_.Size() + 1;
    if (!index_ ? wanted <= kScanned : wanted * 2 <= index_->slots.size()) return;
    auto index = std::make_unique<Index>();
    index->slots.resize(std::bit_ceil((Count() + 1) * 4));
    index_ = std::move(index);
    CloseHoles();
  }

  void CloseHoles() noexcept {
    std::size_t kept = 0;
    for (std::size_t i = 0; holes_ && i < entries_.Size(); ++i) {
      if (!entries_[i].key_) continue;
      if (kept != i) entries_[kept] = std::exchange(entries_[i], Entry());
      ++kept;
    }
    if (holes_) entries_.Shrink(kept);
    holes_ = 0;
    LinkAll();
  }

  void LinkAll() noexcept {
    if (!index_) return;
    index_->positions.clear();
    std::fill(index_->slots.begin(), index_->slots.end(), Slot{});
    for (std::size_t i = 0; i < entries_.Size(); ++i) Link(i);
  }

  void Link(std::size_t index) noexcept {
    auto& slots = index_->slots;
    const std::size_t mask = slots.size() - 1;
    const auto hash = entries_[index].key_.Hash();
    std::size_t probe = hash & mask;
    while (slots[probe].taken) probe = (probe + 1) & mask;
    slots[probe] = {hash, static_cast<std::uint32_t>(index + 1)};
  }

  Entries entries_;
  std::uint32_t holes_ = 0;
  std::uint32_t firstHole_ = 0;
  std::uint32_t lastHole_ = 0;
  std::unique_ptr<Index> index_;  // none while entries are few
};

}  // namespace tavio::vexo
