#include "companion/recorder/RecordingObject.h"

#include "com/server/ComClass.h"
#include "companion/recorder/PlatformCalls.h"

namespace tavio::companion {

STDMETHODIMP RecordingObject::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  if (iid == IID_IRecorded) return ComObject::QueryInterface(IID_IUnknown, object);
  const bool own = iid == IID_IUnknown || iid == IID_IDispatch;
  return own ? ComObject::QueryInterface(iid, object) : real_->QueryInterface(iid, object);
}

STDMETHODIMP RecordingObject::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
  const ComPtr<IDispatch> alive(this);
  return com::Guarded([&] {
    const auto recording = Recording::Running();
    if (recording && count > 0 && recording->Hides(progId_, names[0])) {
      ids[0] = DISPID_UNKNOWN;
      return HRESULT{DISP_E_UNKNOWNNAME};
    }
    const HRESULT result = real_->GetIDsOfNames(iid, names, count, locale, ids);
    if (SUCCEEDED(result) && count > 0 && NameOf(ids[0]).empty()) names_.emplace_back(ids[0], names[0]);
    return result;
  });
}

Text RecordingObject::NameOf(DISPID id) const {
  for (const auto& [known, name] : names_) {
    if (known == id) return name;
  }
  return {};
}

// A log entry that this recorder has begun is unknown to the real log.
HRESULT RecordingObject::PassOn(const Invocation& call) {
  if (progId_ == kLog && EqualsName(call.member, L"LogEnd") && call.parameters && call.parameters->cArgs == 2 &&
      Value::CopyOf(call.parameters->rgvarg[1]).ToInt32() < 0) {
    return S_OK;
  }
  return call.PassTo(real_.Get());
}

STDMETHODIMP RecordingObject::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* info, UINT* wrongArgument) {
  const ComPtr<IDispatch> alive(this);
  return com::Guarded([&] {
    if (!parameters) return E_POINTER;
    const Text name = NameOf(id);
    const Invocation call{progId_, name, id, locale, flags, parameters, result, info, wrongArgument};
    const auto recording = Recording::Running();
    return recording ? recording->Invoke(real_.Get(), call) : PassOn(call);
  });
}

HRESULT RecordingFactory::Register() noexcept {
  const HRESULT result = CoRegisterClassObject(id_, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
  return SUCCEEDED(result) && cookie_ == 0 ? CO_E_OBJISREG : result;
}

void RecordingFactory::Revoke() noexcept {
  if (const DWORD cookie = std::exchange(cookie_, 0)) CoRevokeClassObject(cookie);
}

HRESULT RecordingFactory::MakeReal(ComPtr<IDispatch>& object) {
  if (!real_) {
    Revoke();
    const HRESULT found = CoGetClassObject(id_, CLSCTX_SERVER, nullptr, IID_PPV_ARGS(&real_));
    // Whoever was loaded by that may have ended the recording.
    const auto recording = recording_.lock();
    const HRESULT taken = recording && recording->IsRunning() ? Register() : S_OK;
    if (FAILED(found)) return found;
    if (FAILED(taken)) recording->LoseSight(progId_);
    if (FAILED(taken) && recording->KeepsBack()) return taken;
  }
  return real_->CreateInstance(nullptr, IID_PPV_ARGS(&object));
}

STDMETHODIMP RecordingFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  const ComPtr<IClassFactory> alive(this);
  return com::Guarded([&] {
    const auto recording = recording_.lock();
    if (recording && recording->IsRunning()) return recording->Create(*this, iid, object);
    ComPtr<IDispatch> real;
    const HRESULT made = MakeReal(real);
    return FAILED(made) ? made : real->QueryInterface(iid, object);
  });
}

STDMETHODIMP RecordingFactory::LockServer(BOOL lock) {
  lock ? com::HoldModule() : com::LetModuleGo();
  return S_OK;
}

}  // namespace tavio::companion
