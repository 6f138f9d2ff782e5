#pragma once

#include <Vexo.h>

// Private interfaces of our own containers: reading in place, without a copy. What is lent holds until the container is
// changed. A position or key that is not there answers S_FALSE and lends nothing. Only speed depends on them.

// {6F3B0C52-9D1E-4C7A-8A55-2F61C1B7E0B1}
inline constexpr IID IID_IDictionaryLend = {
    0x6f3b0c52, 0x9d1e, 0x4c7a, {0x8a, 0x55, 0x2f, 0x61, 0xc1, 0xb7, 0xe0, 0xb1}};
// {6F3B0C52-9D1E-4C7A-8A55-2F61C1B7E0B2}
inline constexpr IID IID_IVectorLend = {0x6f3b0c52, 0x9d1e, 0x4c7a, {0x8a, 0x55, 0x2f, 0x61, 0xc1, 0xb7, 0xe0, 0xb2}};

struct IDictionaryLend : _Dictionary {
  virtual HRESULT STDMETHODCALLTYPE LendEntry(long index, BSTR* key, const VARIANT** value) = 0;
  virtual HRESULT STDMETHODCALLTYPE LendValue(BSTR key, const VARIANT** value) = 0;
  // The value under `key` of the record at a position. E_NOINTERFACE where that is no record of this very class.
  virtual HRESULT STDMETHODCALLTYPE LendField(long index, BSTR key, const VARIANT** value) = 0;
};

struct IVectorLend : _Vector {
  virtual HRESULT STDMETHODCALLTYPE LendItem(long index, const VARIANT** value) = 0;
};
