#pragma once

#include <optional>

#include "foundation/packages/ContainerHandle.h"
#include "foundation/packages/StoredValue.h"
#include "foundation/values/Key.h"

struct _Dictionary;
struct IDictionaryInPlace;

namespace tavio {

class Entry;

// A handle on a keyed record or list, shared by reference: copying the handle copies nothing else. Entries keep the
// order of their insertion and are also reached by position, from 1. Works on our own containers through their
// interface and on any object that has the members by name; hands out the very object it was made from.
// Every operation on an unset handle, and every failure of the container, raises Error.
//
// A field that may be absent is read in three ways, which a host's own container tells apart: Get is its `Value`, which
// may fail for an absent key; GetValue is its `GetValue`; Find is its `Lookup` and then, for a key that is there, its
// `Value`. Only Find tells an absent field from an empty one. On our own containers each is one step.
class Dictionary : public ContainerHandle<_Dictionary, IDictionaryInPlace> {
 public:
  // Unset.
  Dictionary() noexcept = default;
  // Null makes an unset handle; an object that is no keyed container raises a type mismatch.
  explicit Dictionary(const ComPtr<IDispatch>& object);
  // Unset for an empty value and a database null; type mismatch for a scalar.
  explicit Dictionary(const Value& value);
  static Dictionary New();

  std::int32_t Count() const;
  // Empty beyond the last position.
  Text Name(std::int32_t position) const;
  // The stored value; empty if the key is absent.
  StoredValue Get(const Key& key) const;
  StoredValue GetValue(const Key& key) const;
  StoredValue GetValue(const Key& key, const Value& fallback) const;
  std::optional<StoredValue> Find(const Key& key) const;
  // A text field of the record under `key`, read in place without a call of foreign code. Uncertain if only the containers
  // themselves can tell; certain and without a text if there is no such record, or no such field in it.
  struct Peeked {
    bool isCertain;
    std::optional<TextView> text;
  };
  Peeked PeekTextUnder(TextView key, const Key& field) const;
  bool Lookup(const Key& key) const;
  // Adds at the end or replaces in place. An object is stored by reference.
  void Set(const Key& key, const Value& value) const;
  void Set(const Key& key, const Dictionary& object) const;
  // Does nothing if the key is absent.
  void Remove(const Key& key) const;
  // One level deep: objects held as values are shared.
  Dictionary Clone() const;
  Dictionary CloneAll() const;

  // The first position from `position` to `last` at which a search for a record whose `field` is `text` must look: where
  // it is found, and where only the container itself can tell; `last` + 1 if there is none.
  std::int32_t SkipOtherTexts(std::int32_t position, std::int32_t last, const Key& field, TextView text) const;

  // The entry at a position from 1 to Count.
  Entry At(std::int32_t position) const;

 private:
  friend class Entry;
  friend class EntryReader;
};

// What a walk over a container by name asks for again and again, looked up once.
class EntryReader {
 public:
  explicit EntryReader(Dictionary record) noexcept : record_(std::move(record)) {}

  const Dictionary& Record() const noexcept { return record_; }
  // By calls, for containers that lend nothing.
  BString NameAt(std::int32_t position) const;
  Value ValueOf(BSTR name) const;

 private:
  DISPID Member(DISPID& known, const wchar_t* name) const;

  Dictionary record_;
  mutable DISPID name_ = DISPID_UNKNOWN;
  mutable DISPID value_ = DISPID_UNKNOWN;
};

// One entry of a Dictionary: its key and its value, each read when it is first asked for. What it refers to holds until
// the container is changed.
class Entry {
 public:
  // `reader` must outlive the entry.
  Entry(const EntryReader& reader, std::int32_t position) noexcept : reader_(&reader), position_(position) {}
  Entry(EntryReader&& own, std::int32_t position);
  Entry(const Entry&) = delete;
  Entry& operator=(const Entry&) = delete;

  TextView KeyView() const { return ViewOf(Name()); }
  Key BorrowKey() const { return Key::Borrow(Name()); }
  const Value& Stored() const;
  // The value as a record; type mismatch if it is none.
  Dictionary Record() const { return Dictionary(Stored()); }
  // A field of that record, empty if it is absent: without a handle on the record if the container can do without.
  StoredValue Field(const Key& key) const;

 private:
  BSTR Name() const;
  void Read() const;
  void Own() const;

  const EntryReader* reader_;
  std::optional<EntryReader> own_;
  std::int32_t position_;
  mutable bool read_ = false;
  mutable BSTR name_ = nullptr;
  mutable BString ownName_;  // if the container lends none
  mutable std::optional<StoredValue> value_;
};

// A stored value as a key, borrowed if it is a text. The value must outlive the key.
inline Key KeyOf(const Value& value) {
  return value.IsText() ? Key::Borrow(value.Raw().bstrVal) : Key(TextView(value.ToText()));
}

}  // namespace tavio
