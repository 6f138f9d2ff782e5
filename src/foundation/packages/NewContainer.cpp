#include "foundation/packages/NewContainer.h"

#include <Vexo.h>

#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"

namespace tavio {
namespace {

struct Kind {
  const wchar_t* progId;
  CLSID ownClass;
};

const Kind& KindOf(Container kind) {
  static const Kind kinds[] = {{L"Vexo.Dictionary", __uuidof(::Dictionary)}, {L"Vexo.Vector", __uuidof(::Vector)}};
  return kinds[static_cast<int>(kind)];
}

// A factory with the module that its code is in, which must stay loaded even if COM is shut down and started again.
struct KeptFactory {
  ComPtr<IClassFactory> factory;
  HMODULE module = nullptr;
  DWORD thread = 0;
};

KeptFactory& KeptFor(Container kind) noexcept {
  static auto* const kept = new KeptFactory[2];  // no destructor: when the process ends, theirs may already be gone
  return kept[static_cast<int>(kind)];
}

void Forget(KeptFactory& kept) noexcept {
  kept.factory.Reset();
  if (kept.module) FreeLibrary(std::exchange(kept.module, nullptr));
}

void Keep(KeptFactory& kept, const ComPtr<IClassFactory>& factory) noexcept {
  Forget(kept);
  const auto* functions = *reinterpret_cast<const wchar_t* const*>(factory.Get());
  if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, functions, &kept.module)) return;
  kept.factory = factory;
  kept.thread = GetCurrentThreadId();
}

HRESULT RegisteredFactory(const Kind& kind, ComPtr<IClassFactory>& factory) noexcept {
  CLSID registered;
  const HRESULT result = CLSIDFromProgID(kind.progId, &registered);
  return FAILED(result) ? result : CoGetClassObject(registered, CLSCTX_SERVER, nullptr, IID_PPV_ARGS(&factory));
}

// The library stays loaded: objects of it may outlive any moment at which it could be freed.
HRESULT FactoryBesideLibrary(const Kind& kind, ComPtr<IClassFactory>& factory) {
  const HMODULE library = LoadLibraryW((GetAppFolder() + L"Vexo10.dll").c_str());
  if (!library) return REGDB_E_CLASSNOTREG;
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto getClassObject =
      reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
  return getClassObject ? getClassObject(kind.ownClass, IID_PPV_ARGS(&factory)) : REGDB_E_CLASSNOTREG;
}

HRESULT Make(IClassFactory* factory, ComPtr<IDispatch>& object) noexcept {
  const ComPtr<IClassFactory> held(factory);
  return held->CreateInstance(nullptr, IID_PPV_ARGS(&object));
}

}  // namespace

ComPtr<IDispatch> NewContainer(Container kind) {
  auto& kept = KeptFor(kind);
  ComPtr<IDispatch> object;
  if (kept.factory && kept.thread == GetCurrentThreadId()) {
    if (SUCCEEDED(Make(kept.factory.Get(), object))) return object;
    Forget(kept);
  }
  const Kind& which = KindOf(kind);
  ComPtr<IClassFactory> factory;
  HRESULT result = RegisteredFactory(which, factory);
  if (SUCCEEDED(result)) result = Make(factory.Get(), object);
  if (FAILED(result)) {
    factory.Reset();
    result = FactoryBesideLibrary(which, factory);
    if (SUCCEEDED(result)) result = Make(factory.Get(), object);
  }
  if (FAILED(result)) throw Error::CannotCreate(which.progId, result);
  Keep(kept, factory);
  return object;
}

void ForgetContainerFactories() noexcept {
  Forget(KeptFor(Container::kDictionary));
  Forget(KeptFor(Container::kVector));
}

}  // namespace tavio
