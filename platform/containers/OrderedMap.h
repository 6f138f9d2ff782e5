#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
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
// Values that leave the map are handed to the caller, who destroys them when the map is whole again: what they hold may
// call back.
template <class V>
class OrderedMap {
 public:
  class Entry {
   public:
    Entry(std::uint32_t hash, InternedKey key, V value) noexcept
        : key_(std::move(key)), hash_(hash), value_(std::move(value)) {}

    const InternedKey& Key() const noexcept { return key_; }
    const V& Value() const noexcept { return value_; }

   private:
    friend class OrderedMap;

    bool Is(std::uint32_t hash, TextView key) const noexcept { return hash_ == hash && key_ && key_.View() == key; }

    InternedKey key_;  // unset in a hole
    std::uint32_t hash_;
    V value_;
  };

  std::size_t Count() const noexcept { return entries_.size() - holes_; }

  // Null if the key is absent.
  const V* Find(TextView key) const noexcept {
    const auto index = IndexOf(HashOf(key), key);
    return index == kNone ? nullptr : &entries_[index].value_;
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
    InternedKey fresh = entries_.size() < kFields ? RecentKeys::Get(hash, key) : InternedKey(key);
    MakeRoom();
    entries_.emplace_back(hash, std::move(fresh), std::move(value));
    if (!table_.empty()) Link(entries_.size() - 1);
    positions_.clear();
    return V();
  }

  // Answers the value that was removed, empty if the key is absent. Later entries move up one position.
  V Remove(TextView key) noexcept {
    const auto index = IndexOf(HashOf(key), key);
    if (index == kNone) return V();
    Entry& entry = entries_[index];
    entry.key_ = InternedKey();
    V removed = std::exchange(entry.value_, V());
    firstHole_ = holes_ ? std::min(firstHole_, index) : index;
    lastHole_ = holes_ ? std::max(lastHole_, index) : index;
    ++holes_;
    positions_.clear();
    if (holes_ > kScanned && holes_ > Count()) CloseHoles();
    return removed;
  }

  // The same keys in the same order; `copy` makes each value from its original.
  template <class Copy>
  OrderedMap CloneWith(Copy&& copy) const {
    OrderedMap clone;
    clone.entries_.reserve(Count());
    for (const auto& entry : entries_) {
      if (entry.key_) clone.entries_.emplace_back(entry.hash_, entry.key_, copy(entry.value_));
    }
    if (holes_ == 0) {
      clone.table_ = table_;
    } else {
      clone.table_.resize(table_.size());
      clone.LinkAll();
    }
    return clone;
  }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  // Up to so many entries, comparing the hashes one by one is quicker than a table.
  static constexpr std::size_t kScanned = 8;
  // Beyond so many entries, the keys are no names of fields, which other records have too.
  static constexpr std::size_t kFields = 64;
  static constexpr std::size_t kFewest = 4;

  std::size_t IndexOf(std::uint32_t hash, TextView key) const noexcept {
    if (table_.empty()) {
      for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].Is(hash, key)) return i;
      }
      return kNone;
    }
    const std::size_t mask = table_.size() - 1;
    for (std::size_t probe = hash & mask;; probe = (probe + 1) & mask) {
      const std::uint32_t taken = table_[probe];
      if (taken == 0) return kNone;
      if (entries_[taken - 1].Is(hash, key)) return taken - 1;
    }
  }

  std::size_t IndexAt(std::size_t ordinal) {
    if (holes_ == 0 || ordinal < firstHole_) return ordinal;
    if (ordinal + holes_ > lastHole_) return ordinal + holes_;
    if (positions_.empty()) ListPositions();
    return positions_[ordinal];
  }

  void ListPositions() {
    positions_.reserve(Count());
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (entries_[i].key_) positions_.push_back(static_cast<std::uint32_t>(i));
    }
  }

  // At most half of the table is taken, holes included, so that a probe always ends.
  void MakeRoom() {
    if (entries_.empty()) entries_.reserve(kFewest);
    const std::size_t wanted = entries_.size() + 1;
    if (table_.empty() ? wanted <= kScanned : wanted * 2 <= table_.size()) return;
    std::vector<std::uint32_t> larger(std::bit_ceil((Count() + 1) * 4));
    table_.swap(larger);
    CloseHoles();
  }

  void CloseHoles() noexcept {
    std::erase_if(entries_, [](const Entry& entry) { return !entry.key_; });
    holes_ = 0;
    positions_.clear();
    std::fill(table_.begin(), table_.end(), 0u);
    LinkAll();
  }

  void LinkAll() noexcept {
    if (table_.empty()) return;
    for (std::size_t i = 0; i < entries_.size(); ++i) Link(i);
  }

  void Link(std::size_t index) noexcept {
    const std::size_t mask = table_.size() - 1;
    std::size_t probe = entries_[index].hash_ & mask;
    while (table_[probe] != 0) probe = (probe + 1) & mask;
    table_[probe] = static_cast<std::uint32_t>(index + 1);
  }

  std::vector<Entry> entries_;
  std::vector<std::uint32_t> table_;      // hash to index + 1; none while entries are few
  std::vector<std::uint32_t> positions_;  // ordinal to index; made at need, dropped by every change
  std::size_t holes_ = 0;
  std::size_t firstHole_ = 0;
  std::size_t lastHole_ = 0;
};

}  // namespace tavio::vexo
