#pragma once

#include <atomic>
#include <cstdint>

#include "containers/SharedKey.h"

namespace tavio::vexo {

// Keys made lately, so that the records of a list, which all have the same few fields, share the texts of their keys
// instead of holding one each. Any number of threads may ask.
class RecentKeys {
 public:
  // A key of this text. Throws std::bad_alloc.
  static SharedKey Get(std::uint32_t hash, TextView text) {
    static RecentKeys recent;
    auto& slot = recent.slots_[hash % kSlots];
    auto key = SharedKey::Adopt(slot.exchange(nullptr));  // whoever empties a slot owns what was in it
    if (!key || key.View() != text) key = SharedKey(text);
    SharedKey::Adopt(slot.exchange(SharedKey(key).Detach()));
    return key;
  }

  ~RecentKeys() {
    for (auto& slot : slots_) SharedKey::Adopt(slot.exchange(nullptr));
  }

 private:
  RecentKeys() = default;

  static constexpr std::size_t kSlots = 256;
  std::atomic<Char*> slots_[kSlots] = {};
};

}  // namespace tavio::vexo
