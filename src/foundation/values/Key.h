#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "foundation/values/BString.h"

namespace tavio {

// A literal laid out as a BSTR (length in bytes directly before the text), so that a key known at compile time
// is passed to a container without an allocation.
template <std::size_t N>
struct KeyLiteral {
  alignas(8) std::uint32_t padding = 0;
  std::uint32_t bytes = (N - 1) * sizeof(wchar_t);
  wchar_t text[N] = {};

  consteval KeyLiteral(const wchar_t (&source)[N]) { std::copy_n(source, N, text); }
};

// The key of an entry: `L"FCode"_key`, a number's decimal text, or any text. Immovable, because it is made where it is
// used.
class Key {
 public:
  explicit Key(TextView text) : owned_(text), text_(owned_.Get()) {}
  explicit Key(std::int32_t number) : Key(TextView(std::to_wstring(number))) {}
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  // Borrows `text`, which must outlive the key.
  static Key Borrow(BSTR text) noexcept { return Key(text, 0); }

  BSTR Get() const noexcept { return text_; }
  TextView View() const noexcept { return ViewOf(text_); }

 private:
  Key(BSTR text, int) noexcept : text_(text) {}

  BString owned_;
  BSTR text_;
};

// One allocation that serves many keys, one after another.
class KeyBuffer {
 public:
  // A key that holds until the next one is made.
  Key Borrow(TextView text) {
    const std::size_t units = text.size() + kLength + 1;
    if (buffer_.size() < units) buffer_.resize(units * 2);
    const auto bytes = static_cast<std::uint32_t>(text.size() * sizeof(wchar_t));
    std::memcpy(buffer_.data(), &bytes, sizeof bytes);
    text.copy(buffer_.data() + kLength, text.size());
    buffer_[kLength + text.size()] = L'\0';
    return Key::Borrow(buffer_.data() + kLength);
  }

 private:
  static constexpr std::size_t kLength = sizeof(std::uint32_t) / sizeof(wchar_t);

  std::vector<wchar_t> buffer_;
};

template <KeyLiteral literal>
Key operator""_key() noexcept {
  return Key::Borrow(const_cast<BSTR>(literal.text));  // containers take a BSTR, and only read it
}

}  // namespace tavio
