#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

#include "foundation/values/Text.h"

namespace tavio::vexo {

// A quick hash for the short keys of records: four characters at a time, the last four of them possibly twice.
inline std::uint32_t HashOf(TextView key) noexcept {
  constexpr std::size_t kStep = 4;
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;  // odd, without a pattern in its bits
  const auto mixed = [](std::uint64_t hash, const Char* text, std::size_t length) {
    std::uint64_t units = 0;
    std::memcpy(&units, text, length * sizeof(Char));
    hash = (hash ^ units) * kSpread;
    return hash ^ (hash >> 32);
  };
  std::uint64_t hash = key.size() * kSpread;
  if (key.empty()) return 0;
  if (key.size() < kStep) return static_cast<std::uint32_t>(mixed(hash, key.data(), key.size()));
  for (std::size_t i = 0; i + kStep < key.size(); i += kStep) hash = mixed(hash, key.data() + i, kStep);
  return static_cast<std::uint32_t>(mixed(hash, key.data() + key.size() - kStep, kStep));
}

// Four characters at a time, the last four first: the texts of a list often begin alike.
inline bool SameText(TextView one, TextView other) noexcept {
  constexpr std::size_t kStep = 4;
  const auto four = [](const Char* text) {
    std::uint64_t units;
    std::memcpy(&units, text, sizeof units);
    return units;
  };
  static_assert(sizeof(Char) * kStep == sizeof(std::uint64_t));
  if (one.size() != other.size()) return false;
  if (one.size() < kStep) return std::equal(one.begin(), one.end(), other.begin());
  const std::size_t last = one.size() - kStep;
  if (four(one.data() + last) != four(other.data() + last)) return false;
  for (std::size_t i = 0; i < last; i += kStep) {
    if (four(one.data() + i) != four(other.data() + i)) return false;
  }
  return true;
}

// The immutable key of an entry, shared by the records that have it in common. It is laid out as a BSTR
// (length in bytes directly before the text, a zero behind it), so that it is lent as one; nobody but InternedKey may
// free it.
class InternedKey {
 public:
  // No key at all, which is not the empty key.
  InternedKey() noexcept = default;
  InternedKey(std::uint32_t hash, TextView text) : text_(Allocate(hash, text)) {}
  InternedKey(const InternedKey& other) noexcept : text_(other.text_) {
    if (text_) HeadOf(text_).shares.fetch_add(1, std::memory_order_relaxed);
  }
  InternedKey(InternedKey&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  InternedKey& operator=(InternedKey other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~InternedKey() {
    if (text_ && HeadOf(text_).shares.fetch_sub(1, std::memory_order_acq_rel) == 1) Free(text_);
  }

  // A share as a plain pointer, and back.
  [[nodiscard]] Char* Detach() noexcept { return std::exchange(text_, nullptr); }
  static InternedKey Adopt(Char* detached) noexcept {
    InternedKey key;
    key.text_ = detached;
    return key;
  }

  explicit operator bool() const noexcept { return text_ != nullptr; }
  Char* Get() const noexcept { return text_; }
  // Of a key that is set.
  TextView View() const noexcept { return TextView(text_, HeadOf(text_).bytes / sizeof(Char)); }
  std::uint32_t Hash() const noexcept { return HeadOf(text_).hash; }

 private:
  struct alignas(8) Head {
    std::uint32_t hash;
    std::atomic<std::uint32_t> shares = 1;
    std::uint32_t unused;
    std::uint32_t bytes;
  };

  static Head& HeadOf(Char* text) noexcept { return *(reinterpret_cast<Head*>(text) - 1); }

  static Char* Allocate(std::uint32_t hash, TextView text) {
    const std::size_t bytes = text.size() * sizeof(Char);
    auto* head = new (::operator new(sizeof(Head) + bytes + sizeof(Char))) Head;
    head->hash = hash;
    head->bytes = static_cast<std::uint32_t>(bytes);
    auto* copy = reinterpret_cast<Char*>(head + 1);
    if (bytes) std::memcpy(copy, text.data(), bytes);
    copy[text.size()] = Char{};
    return copy;
  }
  static void Free(Char* text) noexcept {
    Head* head = &HeadOf(text);
    head->~Head();
    ::operator delete(head);
  }

  Char* text_ = nullptr;
};

// Keys made lately, so that the records of a list, which all have the same few fields, share the texts of their keys
// instead of holding one each. Any number of threads may ask.
class RecentKeys {
 public:
  // A key of this text. Throws std::bad_alloc.
  static InternedKey Get(std::uint32_t hash, TextView text) {
    static RecentKeys recent;
    auto& slot = recent.slots_[hash % kSlots];
    auto key = InternedKey::Adopt(slot.exchange(nullptr));  // whoever empties a slot owns what was in it
    if (!key || !SameText(key.View(), text)) key = InternedKey(hash, text);
    InternedKey::Adopt(slot.exchange(InternedKey(key).Detach()));
    return key;
  }

  ~RecentKeys() {
    for (auto& slot : slots_) InternedKey::Adopt(slot.exchange(nullptr));
  }

 private:
  RecentKeys() = default;

  static constexpr std::size_t kSlots = 256;
  std::atomic<Char*> slots_[kSlots] = {};
};

}  // namespace tavio::vexo
