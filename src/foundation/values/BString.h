#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

#include "foundation/values/Text.h"

namespace tavio {

// The characters of a BSTR, read in place. A null BSTR is the empty text. Its length in bytes stands directly before
// the text; asking the system for it would cost more than most of the work done with short keys.
inline TextView ViewOf(BSTR text) noexcept {
  if (!text) return {};
  std::uint32_t bytes;
  std::memcpy(&bytes, reinterpret_cast<const char*>(text) - sizeof bytes, sizeof bytes);
  return TextView(text, bytes / sizeof(wchar_t));
}

// An owned BSTR. Throws std::bad_alloc if the allocation fails.
class BString {
 public:
  BString() noexcept = default;
  explicit BString(TextView text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (!text_) throw std::bad_alloc();
  }
  // Of that many characters, for whoever writes them.
  static BString OfSize(std::size_t size) {
    BString text;
    text.text_ = SysAllocStringLen(nullptr, static_cast<UINT>(size));
    if (!text.text_) throw std::bad_alloc();
    return text;
  }
  BString(BString&& other) noexcept : text_(other.Detach()) {}
  BString& operator=(BString&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~BString() {
    if (text_) SysFreeString(text_);
  }

  TextView View() const noexcept { return ViewOf(text_); }
  BSTR Get() const noexcept { return text_; }
  friend bool operator==(const BString& one, TextView other) noexcept { return one.View() == other; }
  // The place for a callee to put a new BSTR into; what was held is freed.
  BSTR* Receive() noexcept {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
  }
  [[nodiscard]] BSTR Detach() noexcept { return std::exchange(text_, nullptr); }

 private:
  BSTR text_ = nullptr;
};

}  // namespace tavio
