#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

#include "foundation/Text.h"

namespace tavio::vexo {

// The immutable key of an entry, shared by the records that have it in common. It is laid out as a BSTR
// (length in bytes directly before the text, a zero behind it), so that it is lent as one; nobody but SharedKey may
// free it.
class SharedKey {
 public:
  // No key at all, which is not the empty key.
  SharedKey() noexcept = default;
  explicit SharedKey(TextView text) : text_(Allocate(text)) {}
  SharedKey(const SharedKey& other) noexcept : text_(other.text_) {
    if (text_) HeadOf(text_).shares.fetch_add(1, std::memory_order_relaxed);
  }
  SharedKey(SharedKey&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  SharedKey& operator=(SharedKey other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~SharedKey() {
    if (text_ && HeadOf(text_).shares.fetch_sub(1, std::memory_order_acq_rel) == 1) Free(text_);
  }

  // A share as a plain pointer, and back.
  [[nodiscard]] Char* Detach() noexcept { return std::exchange(text_, nullptr); }
  static SharedKey Adopt(Char* detached) noexcept {
    SharedKey key;
    key.text_ = detached;
    return key;
  }

  explicit operator bool() const noexcept { return text_ != nullptr; }
  Char* Get() const noexcept { return text_; }
  // Of a key that is set.
  TextView View() const noexcept { return TextView(text_, HeadOf(text_).bytes / sizeof(Char)); }

 private:
  struct alignas(8) Head {
    std::atomic<std::uint32_t> shares = 1;
    std::uint32_t bytes;
  };

  static Head& HeadOf(Char* text) noexcept { return *(reinterpret_cast<Head*>(text) - 1); }

  static Char* Allocate(TextView text) {
    const std::size_t bytes = text.size() * sizeof(Char);
    auto* head = new (::operator new(sizeof(Head) + bytes + sizeof(Char))) Head;
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

}  // namespace tavio::vexo
