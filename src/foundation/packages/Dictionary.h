#pragma once

#include "foundation/values/Key.h"
#include "foundation/values/Value.h"

struct _Dictionary;
struct IDictionaryInPlace;

namespace tavio {

// A handle on a keyed record or list, shared by reference: copying the handle copies nothing else. Entries keep the
// order of their insertion and are also reached by position, from 1. Works on our own containers through their
// interface and on any object that has the members by name; hands out the very object it was made from.
// Every operation on an unset handle, and every failure of the container, raises Error.
class Dictionary {
 public:
  struct Entry {
    BString keyCopy;  // set only where the container does not lend its key
    BSTR key;
    StoredValue value;

    Key BorrowKey() const noexcept { return Key::Borrow(key); }
    TextView KeyView() const noexcept { return ViewOf(key); }
  };

  // Unset.
  Dictionary() noexcept = default;
  // Null makes an unset handle; an object that is no keyed container raises a type mismatch.
  explicit Dictionary(const ComPtr<IDispatch>& object);
  // Unset for an empty value; type mismatch for a scalar.
  explicit Dictionary(const Value& value);
  static Dictionary New();

  explicit operator bool() const noexcept { return object_ != nullptr; }
  // The object itself; null when unset.
  const ComPtr<IDispatch>& Object() const noexcept { return object_; }
  Value AsValue() const noexcept { return Value(object_); }

  std::int32_t Count() const;
  // Empty beyond the last position.
  Text Name(std::int32_t position) const;
  // The stored value; empty when the key is absent.
  StoredValue Get(const Key& key) const;
  // Adds at the end or replaces in place. An object is stored by reference.
  void Set(const Key& key, const Value& value) const;
  void Set(const Key& key, const Dictionary& object) const;
  bool Lookup(const Key& key) const;
  StoredValue GetValue(const Key& key) const;
  StoredValue GetValue(const Key& key, const Value& fallback) const;
  // Does nothing when the key is absent.
  void Remove(const Key& key) const;
  // One level deep: objects held as values are shared.
  Dictionary Clone() const;
  Dictionary CloneAll() const;

  // The entry at a position from 1 to Count, lent until the container is changed.
  Entry At(std::int32_t position) const;
  // A field of the record at a position, as Dictionary(*At(position).value).Get(key) answers it, but without a handle
  // on the record where the container can do without.
  StoredValue FieldAt(std::int32_t position, const Key& key) const;

 private:
  enum class Road { kByName, kInterface, kLending };

  void Bind(IDispatch* object);
  // The container's own interface, or null where it is called by name.
  _Dictionary* Own() const;
  IDictionaryInPlace* Lender() const noexcept;
  void CheckOwn(HRESULT result) const;

  ComPtr<IDispatch> object_;
  Road road_ = Road::kByName;
};

// A stored value as a key, borrowed where it is a text. The value must outlive the key.
inline Key KeyOf(const Value& value) {
  return value.IsText() ? Key::Borrow(value.Raw().bstrVal) : Key(TextView(value.ToText()));
}

// A record's field as a package; unset when absent.
inline Dictionary PackageAt(const Dictionary& record, const Key& key) { return Dictionary(*record.GetValue(key)); }

}  // namespace tavio
