#pragma once

#include <concepts>
#include <initializer_list>
#include <string>

#include "foundation/packages/Vector.h"

// Packages written down in a line, and read back as text, so that a test compares and prints them whole.

namespace tavio::test {

// Anything that can be stored: a scalar, a text, a package, a Value. An `int` is stored as a 32-bit integer.
struct Item {
  Value value;

  Item(const Item& other) : value(other.value.Copy()) {}
  Item(const Value& stored) : value(stored.Copy()) {}
  Item(const wchar_t* text) : value(text) {}
  Item(const Text& text) : value(TextView(text)) {}
  Item(const Dictionary& record) : value(record.AsValue()) {}
  Item(const Vector& list) : value(list.AsValue()) {}
  Item(const ComPtr<IDispatch>& object) : value(object) {}
  template <class T>
  requires std::integral<T> || std::floating_point<T> Item(T scalar) : value(scalar) {}
};

struct Field {
  const wchar_t* key;
  Item item;
};

// A new Dictionary with the fields in this order.
Dictionary Record(std::initializer_list<Field> fields);
// A new Vector of the items.
Vector List(std::initializer_list<Item> items);

// A stored 16-bit integer.
inline Value Short(int number) { return Value(static_cast<std::int16_t>(number)); }

// A value as text in UTF-8: {FCode: "Save", FStatus: 1, FKind: 2s, Messages: {}}, [1, 2.5, true]. A 16-bit integer has
// an "s" behind it; "empty", "null" and "none" (an object reference that is not set) stand for themselves.
std::string Show(const Value& value);
inline std::string Show(const Dictionary& record) { return Show(record.AsValue()); }
inline std::string Show(const Vector& list) { return Show(list.AsValue()); }

std::string Utf8(TextView text);

}  // namespace tavio::test
