#include "foundation/packages/Dictionary.h"

#include "containers/ReadInPlace.h"
#include "foundation/packages/NewContainer.h"

namespace tavio {

namespace {

VARIANT Borrowed(BSTR text) noexcept {
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = VT_BSTR;
  variant.bstrVal = text;
  return variant;
}

VARIANT Borrowed(const Key& key) noexcept { return Borrowed(key.Get()); }

StoredValue StoredOrEmpty(const VARIANT* inPlace) noexcept {
  return inPlace ? StoredValue(*inPlace) : StoredValue(Value());
}

}  // namespace

Dictionary::Dictionary(const ComPtr<IDispatch>& object) {
  if (object) Bind(object.Get(), {L"Lookup"});
}

Dictionary::Dictionary(const Value& value) {
  // Records are walked by the thousand: a reference is not asked for the interface that it is known to have.
  if (value.Type() == VT_DISPATCH) {
    if (auto* object = value.Raw().pdispVal) Bind(object, {L"Lookup"});
  } else if (const auto object = value.ToObject()) {
    Bind(object.Get(), {L"Lookup"});
  }
}

Dictionary Dictionary::New() { return Dictionary(NewContainer(Container::kDictionary)); }

std::int32_t Dictionary::Count() const {
  if (const auto published = HeldPublished()) {
    LONG count = 0;
    CheckCall(published.Get(), published->get_Count(&count));
    return count;
  }
  return CallByName(L"Count").ToInt32();
}

Text Dictionary::Name(std::int32_t position) const {
  if (const auto published = HeldPublished()) {
    BString name;
    CheckCall(published.Get(), published->get_Name(position, name.Receive()));
    return Text(name.View());
  }
  VARIANT arguments[] = {Value(position).Raw()};
  return CallByName(L"Name", arguments).ToText();
}

StoredValue Dictionary::Get(const Key& key) const {
  if (auto* own = ReadInPlace()) {
    const VARIANT* stored = nullptr;
    CheckCall(own, own->ReadValue(key.Get(), &stored));
    return StoredOrEmpty(stored);
  }
  if (const auto published = HeldPublished()) {
    Value value;
    CheckCall(published.Get(), published->get_Value(key.Get(), value.Receive()));
    return StoredValue(std::move(value));
  }
  VARIANT arguments[] = {Borrowed(key)};
  return StoredValue(CallByName(L"Value", arguments));
}

StoredValue Dictionary::GetValue(const Key& key) const {
  if (Published()) return GetValue(key, Value::Missing());
  VARIANT arguments[] = {Borrowed(key)};
  return StoredValue(CallByName(L"GetValue", arguments));
}

StoredValue Dictionary::GetValue(const Key& key, const Value& fallback) const {
  if (auto* own = ReadInPlace()) {
    const VARIANT* stored = nullptr;
    CheckCall(own, own->ReadValue(key.Get(), &stored));
    if (stored) return StoredValue(*stored);
    return StoredValue(fallback.IsEmpty() ? Value() : fallback.Copy());
  }
  if (const auto published = HeldPublished()) {
    Value value;
    CheckCall(published.Get(), published->GetValue(key.Get(), fallback.Raw(), value.Receive()));
    return StoredValue(std::move(value));
  }
  VARIANT arguments[] = {fallback.Raw(), Borrowed(key)};
  return StoredValue(CallByName(L"GetValue", arguments));
}

std::optional<StoredValue> Dictionary::Find(const Key& key) const {
  if (auto* own = ReadInPlace()) {
    const VARIANT* stored = nullptr;
    CheckCall(own, own->ReadValue(key.Get(), &stored));
    return stored ? std::optional<StoredValue>(*stored) : std::nullopt;
  }
  if (!Lookup(key)) return std::nullopt;
  return Get(key);
}

Dictionary::Peeked Dictionary::PeekTextUnder(TextView key, const Key& field) const {
  auto* own = ReadInPlace();
  const auto units = static_cast<UINT>(key.size());
  const VARIANT* held = nullptr;
  if (!own || FAILED(own->ReadFieldUnder(key.data(), units, field.Get(), &held))) return {false, std::nullopt};
  if (!held) return {true, std::nullopt};
  if (held->vt != VT_BSTR) return {false, std::nullopt};
  return {true, ViewOf(held->bstrVal)};
}

bool Dictionary::Lookup(const Key& key) const {
  if (const auto published = HeldPublished()) {
    VARIANT_BOOL found = VARIANT_FALSE;
    CheckCall(published.Get(), published->Lookup(key.Get(), Value::Missing().Raw(), &found));
    return found != VARIANT_FALSE;
  }
  VARIANT arguments[] = {Borrowed(key)};
  return CallByName(L"Lookup", arguments).ToBool();
}

// What is stored may lie in a container that the target changes when it is called, so others get a copy of it. Our own
// make theirs before they let go of anything.
void Dictionary::Set(const Key& key, const Value& value) const {
  const Value copy = ReadInPlace() ? Value() : value.Copy();
  const Value& passed = ReadInPlace() ? value : copy;
  if (const auto published = HeldPublished()) {
    if (!value.IsObject()) return CheckCall(published.Get(), published->put_Value(key.Get(), passed.Raw()));
    return CheckCall(published.Get(), published->putref_Value(key.Get(), passed.ToObject().Get()));
  }
  VARIANT arguments[] = {passed.Raw(), Borrowed(key)};
  CallByName(L"Value", arguments, passed.IsObject() ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT);
}

void Dictionary::Set(const Key& key, const Dictionary& object) const { Set(key, object.AsValue()); }

void Dictionary::Remove(const Key& key) const {
  if (const auto published = HeldPublished()) return CheckCall(published.Get(), published->Remove(key.Get()));
  VARIANT arguments[] = {Borrowed(key)};
  CallByName(L"Remove", arguments);
}

Dictionary Dictionary::Clone() const {
  if (const auto published = HeldPublished()) {
    ComPtr<IDispatch> copy;
    CheckCall(published.Get(), published->Clone(&copy));
    return Dictionary(copy);
  }
  return Dictionary(CallByName(L"Clone"));
}

Dictionary Dictionary::CloneAll() const {
  // By name on every path: the platform reaches this one member so.
  RequireSet();
  return Dictionary(CallByName(L"CloneAll"));
}

std::int32_t Dictionary::SkipOtherTexts(std::int32_t position, std::int32_t last, const Key& field,
                                        TextView text) const {
  auto* own = ReadInPlace();
  if (!own) return position;
  LONG found = position;
  CheckCall(own, own->SkipOtherTexts(position, last, field.Get(), text.data(), static_cast<UINT>(text.size()), &found));
  return found;
}

Entry Dictionary::At(std::int32_t position) const { return Entry(EntryReader(*this), position); }

DISPID EntryReader::Member(DISPID& known, const wchar_t* name) const {
  if (known == DISPID_UNKNOWN) known = MemberOf(record_.Object().Get(), name);
  return known;
}

BString EntryReader::NameAt(std::int32_t position) const {
  if (const auto published = record_.HeldPublished()) {
    BString name;
    record_.CheckCall(published.Get(), published->get_Name(position, name.Receive()));
    return name;
  }
  VARIANT arguments[] = {Value(position).Raw()};
  return BString(InvokeMember(record_.Object().Get(), Member(name_, L"Name"), kCallOrRead, arguments).ToText());
}

Value EntryReader::ValueOf(BSTR name) const {
  if (const auto published = record_.HeldPublished()) {
    Value value;
    record_.CheckCall(published.Get(), published->get_Value(name, value.Receive()));
    return value;
  }
  VARIANT arguments[] = {Borrowed(name)};
  return InvokeMember(record_.Object().Get(), Member(value_, L"Value"), kCallOrRead, arguments);
}

Entry::Entry(EntryReader&& own, std::int32_t position) : reader_(nullptr), own_(std::move(own)), position_(position) {
  reader_ = &*own_;
}

// Our own container gives key and value in one step; others are asked for the key, and for the value behind it.
void Entry::Read() const {
  if (std::exchange(read_, true)) return;
  const auto& record = reader_->Record();
  if (auto* own = record.ReadInPlace()) {
    const VARIANT* stored = nullptr;
    record.CheckCall(own, own->ReadEntry(position_, &name_, &stored));
    value_.emplace(StoredOrEmpty(stored));
    return;
  }
  ownName_ = reader_->NameAt(position_);
  name_ = ownName_.Get();
}

BSTR Entry::Name() const {
  Read();
  return name_;
}

const Value& Entry::Stored() const {
  Read();
  if (!value_) value_.emplace(reader_->ValueOf(name_));
  return **value_;
}

StoredValue Entry::Field(const Key& key) const {
  const auto& record = reader_->Record();
  if (auto* own = record.ReadInPlace()) {
    const VARIANT* stored = nullptr;
    const HRESULT result = own->ReadField(position_, key.Get(), &stored);
    if (SUCCEEDED(result)) return StoredOrEmpty(stored);
  }
  Own();
  return Record().Get(key);
}

// A foreign record may change the container that lends the entry.
void Entry::Own() const {
  const Value& stored = Stored();
  if (!value_->IsInPlace()) return;
  ownName_ = BString(ViewOf(name_));
  name_ = ownName_.Get();
  value_.emplace(stored.Copy());
}

}  // namespace tavio
