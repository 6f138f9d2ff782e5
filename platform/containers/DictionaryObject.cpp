#include "containers/DictionaryObject.h"

#include "containers/Enumerator.h"

namespace tavio::vexo {
namespace {

void HandOut(const VARIANT& value, VARIANT* result) { *result = Value::CopyOf(value).Detach(); }

bool IsLeftOut(const VARIANT& argument) noexcept {
  return argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
}

}  // namespace

STDMETHODIMP DictionaryObject::get_Count(LONG* result) {
  return com::Answer(result, [&] { *result = static_cast<LONG>(map_.Count()); });
}

STDMETHODIMP DictionaryObject::get_Name(LONG index, BSTR* result) {
  return com::Answer(result, [&] {
    const auto* entry = map_.At(index);
    *result = BString(entry ? entry->Key().View() : TextView()).Detach();
  });
}

STDMETHODIMP DictionaryObject::get_Value(BSTR key, VARIANT* result) {
  return com::Answer(result, [&] {
    if (const auto* found = map_.Find(ViewOf(key))) HandOut(found->Raw(), result);
  });
}

// What is replaced or removed is let go at the end of the statement, when the map is whole: it may call back.
STDMETHODIMP DictionaryObject::put_Value(BSTR key, VARIANT value) {
  return com::Guarded([&] {
    map_.Set(ViewOf(key), Value::CopyOf(value));
    return S_OK;
  });
}

STDMETHODIMP DictionaryObject::putref_Value(BSTR key, IDispatch* value) {
  return com::Guarded([&] {
    map_.Set(ViewOf(key), Value(ComPtr<IDispatch>(value)));
    return S_OK;
  });
}

STDMETHODIMP DictionaryObject::Lookup(BSTR key, VARIANT, VARIANT_BOOL* result) {
  return com::Answer(result, [&] { *result = map_.Find(ViewOf(key)) ? VARIANT_TRUE : VARIANT_FALSE; });
}

STDMETHODIMP DictionaryObject::GetValue(BSTR key, VARIANT fallback, VARIANT* result) {
  return com::Answer(result, [&] {
    const auto* found = map_.Find(ViewOf(key));
    if (found || !IsLeftOut(fallback)) HandOut(found ? found->Raw() : fallback, result);
  });
}

STDMETHODIMP DictionaryObject::Remove(BSTR key) {
  map_.Remove(ViewOf(key));
  return S_OK;
}

STDMETHODIMP DictionaryObject::Clone(IDispatch** result) {
  return com::Answer(result, [&] {
    *result = new DictionaryObject(map_.CloneWith([](const Value& stored) { return stored.Copy(); }));
  });
}

STDMETHODIMP DictionaryObject::CloneAll(IDispatch** result) { return Clone(result); }

STDMETHODIMP DictionaryObject::get__NewEnum(IUnknown** result) {
  return com::Answer(result, [&] {
    Enumerator::Items keys;
    keys.reserve(map_.Count());
    for (LONG i = 1; const auto* entry = map_.At(i); ++i) keys.emplace_back(entry->Key().View());
    *result = Enumerator::Over(std::move(keys));
  });
}

STDMETHODIMP DictionaryObject::ReadEntry(LONG index, BSTR* key, const VARIANT** value) {
  return com::Guarded([&] {
    const auto* entry = map_.At(index);
    *key = entry ? entry->Key().Get() : nullptr;
    *value = entry ? &entry->Value().Raw() : nullptr;
    return entry ? S_OK : S_FALSE;
  });
}

STDMETHODIMP DictionaryObject::ReadValue(BSTR key, const VARIANT** value) {
  const auto* found = map_.Find(ViewOf(key));
  *value = found ? &found->Raw() : nullptr;
  return found ? S_OK : S_FALSE;
}

STDMETHODIMP DictionaryObject::ReadField(LONG index, BSTR key, const VARIANT** value) {
  *value = nullptr;
  return com::Guarded([&] {
    const auto* entry = map_.At(index);
    const auto* record = entry ? AsOwn(entry->Value()) : nullptr;
    if (!record) return E_NOINTERFACE;
    const auto* found = record->map_.Find(ViewOf(key));
    if (found) *value = &found->Raw();
    return found ? S_OK : S_FALSE;
  });
}

STDMETHODIMP DictionaryObject::ReadFieldUnder(const wchar_t* key, UINT units, BSTR field, const VARIANT** value) {
  *value = nullptr;
  const auto* found = map_.Find(TextView(key, units));
  if (!found) return S_FALSE;
  const auto* record = AsOwn(*found);
  if (!record) return E_NOINTERFACE;
  const auto* held = record->map_.Find(ViewOf(field));
  if (held) *value = &held->Raw();
  return S_OK;
}

STDMETHODIMP DictionaryObject::SkipOtherTexts(LONG index, LONG last, BSTR field, const wchar_t* text, UINT units,
                                              LONG* position) {
  return com::Guarded([&] {
    const TextView wanted(text, units), name = ViewOf(field);
    const auto hash = HashOf(name);
    Map::Place place;  // the records of a list are laid out alike
    for (*position = index; *position <= last; ++*position) {
      const auto* entry = map_.At(*position);
      const auto* record = entry ? AsOwn(entry->Value()) : nullptr;
      const auto* held = record ? record->map_.FindNear(place, hash, name) : nullptr;
      if (!held || !held->IsText() || SameText(ViewOf(held->Raw().bstrVal), wanted)) break;
    }
    return S_OK;
  });
}

// Whoever has the virtual functions of this object is of this class, and lists of records are walked so often that
// asking each record for its interface would be most of the cost.
const DictionaryObject* DictionaryObject::AsOwn(const Value& stored) const noexcept {
  if (stored.Type() != VT_DISPATCH || !stored.HoldsObject()) return nullptr;
  const auto functionsOf = [](const IDispatch* object) { return *reinterpret_cast<const void* const*>(object); };
  const IDispatch* object = stored.Raw().pdispVal;
  if (functionsOf(object) != functionsOf(this)) return nullptr;
  return static_cast<const DictionaryObject*>(static_cast<const IDictionaryInPlace*>(object));
}

}  // namespace tavio::vexo
