#pragma once

#include "com/server/ComClass.h"
#include "containers/OrderedMap.h"
#include "containers/ReadInPlace.h"
#include "foundation/values/Value.h"

template <>
struct tavio::com::Identity<IDictionaryInPlace> {
  static bool Is(REFIID iid) noexcept { return iid == IID_IDictionaryInPlace || Identity<_Dictionary>::Is(iid); }
};

namespace tavio::vexo {

// A keyed record. Keys are exact; entries keep the order of their insertion, and a value that is replaced keeps its
// place.
//  - Value of an absent key, and GetValue of one without a fallback, are empty; Name of a position that is not there is
//    "", which ends a caller's walk. None of these is an error, nor is removing an absent key.
//  - Objects are stored by reference, whichever kind of assignment stores them; no object is stored as a null object.
//  - Clone and CloneAll both copy one level: packages held as values are shared with the copy.
//  - "For Each" walks the keys that there were at its beginning.
class DictionaryObject final : public com::ComClass<_Dictionary, IDictionaryInPlace> {
 public:
  using Map = OrderedMap<Value>;

  DictionaryObject() noexcept = default;
  explicit DictionaryObject(Map map) noexcept : map_(std::move(map)) {}
  // What is let go may call back a last time, and meets an empty record.
  ~DictionaryObject() override { const Map last = std::exchange(map_, Map()); }

  STDMETHODIMP get_Count(LONG* result) override;
  STDMETHODIMP get_Name(LONG index, BSTR* result) override;
  STDMETHODIMP get_Value(BSTR key, VARIANT* result) override;
  STDMETHODIMP put_Value(BSTR key, VARIANT value) override;
  STDMETHODIMP putref_Value(BSTR key, IDispatch* value) override;
  STDMETHODIMP Lookup(BSTR key, VARIANT reserved, VARIANT_BOOL* result) override;
  STDMETHODIMP GetValue(BSTR key, VARIANT fallback, VARIANT* result) override;
  STDMETHODIMP Remove(BSTR key) override;
  STDMETHODIMP Clone(IDispatch** result) override;
  STDMETHODIMP CloneAll(IDispatch** result) override;
  STDMETHODIMP get__NewEnum(IUnknown** result) override;

  STDMETHODIMP ReadEntry(LONG index, BSTR* key, const VARIANT** value) override;
  STDMETHODIMP ReadValue(BSTR key, const VARIANT** value) override;
  STDMETHODIMP ReadField(LONG index, BSTR key, const VARIANT** value) override;
  STDMETHODIMP ReadFieldUnder(const wchar_t* key, UINT units, BSTR field, const VARIANT** value) override;
  STDMETHODIMP SkipOtherTexts(LONG index, LONG last, BSTR field, const wchar_t* text, UINT units,
                              LONG* position) override;

 private:
  const DictionaryObject* AsOwn(const Value& stored) const noexcept;

  Map map_;
};

}  // namespace tavio::vexo
