#pragma once

#include <Vexo.h>

// Private interfaces of our own containers: reading in place, without a copy. What is read so holds until the container
// is changed. A position or key that is not there answers S_FALSE and a null pointer. Only speed depends on them.

// {6F3B0C52-9D1E-4C7A-8A55-2F61C1B7E0B3}
inline constexpr IID IID_IDictionaryInPlace = {
    0x6f3b0c52, 0x9d1e, 0x4c7a, {0x8a, 0x55, 0x2f, 0x61, 0xc1, 0xb7, 0xe0, 0xb3}};
// {6F3B0C52-9D1E-4C7A-8A55-2F61C1B7E0B2}
inline constexpr IID IID_IVectorInPlace = {
    0x6f3b0c52, 0x9d1e, 0x4c7a, {0x8a, 0x55, 0x2f, 0x61, 0xc1, 0xb7, 0xe0, 0xb2}};

struct IDictionaryInPlace : _Dictionary {
  static const IID& Id() noexcept { return IID_IDictionaryInPlace; }
  virtual HRESULT STDMETHODCALLTYPE ReadEntry(long index, BSTR* key, const VARIANT** value) = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadValue(BSTR key, const VARIANT** value) = 0;
  // The value under `key` of the record at a position. E_NOINTERFACE if that is no record of this very class.
  virtual HRESULT STDMETHODCALLTYPE ReadField(long index, BSTR key, const VARIANT** value) = 0;
  // The same of the record under `key`, which has `units` characters: S_OK and a null pointer if it has no such field,
  // S_FALSE if there is no `key`.
  virtual HRESULT STDMETHODCALLTYPE ReadFieldUnder(const wchar_t* key, UINT units, BSTR field,
                                                   const VARIANT** value) = 0;
  // The first position from `index` to `last` that is anything else than a record of this very class whose `field` is
  // another text than `text`, which has `units` characters; `last` + 1 if there is none.
  virtual HRESULT STDMETHODCALLTYPE SkipOtherTexts(long index, long last, BSTR field, const wchar_t* text, UINT units,
                                                   long* position) = 0;
};

struct IVectorInPlace : _Vector {
  static const IID& Id() noexcept { return IID_IVectorInPlace; }
  virtual HRESULT STDMETHODCALLTYPE ReadItem(long index, const VARIANT** value) = 0;
};
