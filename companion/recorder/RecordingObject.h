#pragma once

#include "com/server/ComObject.h"
#include "companion/recorder/Recording.h"

namespace tavio::companion {

// What an object of the recorder's own is known by.
// {8C1F5E20-7B3A-4D69-A2C4-1E9B60D7F3A1}
inline constexpr IID IID_IRecorded = {0x8c1f5e20, 0x7b3a, 0x4d69, {0xa2, 0xc4, 0x1e, 0x9b, 0x60, 0xd7, 0xf3, 0xa1}};

// Stands in front of one object of the platform. Calls by name go through the recording that runs, if one does; all
// other interfaces are the real object's.
class RecordingObject final : public com::ComObject<IDispatch> {
 public:
  RecordingObject(const wchar_t* progId, ComPtr<IDispatch> real) noexcept : progId_(progId), real_(std::move(real)) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return real_->GetTypeInfoCount(count); }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return real_->GetTypeInfo(index, locale, info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* info, UINT* wrongArgument) override;

 private:
  Text NameOf(DISPID id) const;
  HRESULT PassOn(const Invocation& call);

  const wchar_t* progId_;
  ComPtr<IDispatch> real_;
  std::vector<std::pair<DISPID, Text>> names_;
};

// Stands in front of one class of the platform. The real class is looked for when the first object is made.
class RecordingFactory final : public com::ComObject<IClassFactory> {
 public:
  RecordingFactory(const wchar_t* progId, const CLSID& id, std::weak_ptr<Recording> recording)
      : progId_(progId), id_(id), recording_(std::move(recording)) {}

  const wchar_t* ProgId() const noexcept { return progId_; }
  // Whether the system took this class object: it does not everywhere take a second one of the same class.
  HRESULT Register() noexcept;
  void Revoke() noexcept;
  // Makes a real object.
  HRESULT MakeReal(ComPtr<IDispatch>& object);

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  const wchar_t* progId_;
  CLSID id_;
  std::weak_ptr<Recording> recording_;
  ComPtr<IClassFactory> real_;
  DWORD cookie_ = 0;
};

}  // namespace tavio::companion
