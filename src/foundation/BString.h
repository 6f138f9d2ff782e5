#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <new>
#include <utility>

#include "foundation/Text.h"

namespace tavio {

// The characters of a BSTR, read in place. A null BSTR is the empty text.
inline TextView ViewOf(BSTR text) noexcept { return text ? TextView(text, SysStringLen(text)) : TextView(); }

// An owned BSTR. Throws std::bad_alloc where the allocation fails.
class BString {
 public:
  BString() noexcept = default;
  explicit BString(TextView text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (!text_) throw std::bad_alloc();
  }
  BString(BString&& other) noexcept : text_(other.Detach()) {}
  BString& operator=(BString&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~BString() { SysFreeString(text_); }

  TextView View() const noexcept { return ViewOf(text_); }
  BSTR Get() const noexcept { return text_; }
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
