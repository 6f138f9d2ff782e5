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

// The library stays loaded: objects of it may outlive any moment at which it could be freed.
HRESULT CreateBesideLibrary(const CLSID& ownClass, ComPtr<IDispatch>& object) {
  const HMODULE library = LoadLibraryW((GetAppFolder() + L"Vexo10.dll").c_str());
  if (!library) return REGDB_E_CLASSNOTREG;
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto getClassObject =
      reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
  if (!getClassObject) return REGDB_E_CLASSNOTREG;
  ComPtr<IClassFactory> factory;
  const HRESULT result = getClassObject(ownClass, IID_PPV_ARGS(&factory));
  return FAILED(result) ? result : factory->CreateInstance(nullptr, IID_PPV_ARGS(&object));
}

}  // namespace

ComPtr<IDispatch> NewContainer(Container kind) {
  const Kind& which = KindOf(kind);
  ComPtr<IDispatch> object;
  CLSID registered;
  HRESULT result = CLSIDFromProgID(which.progId, &registered);
  if (SUCCEEDED(result)) {
    result = CoCreateInstance(registered, nullptr, CLSCTX_SERVER, IID_PPV_ARGS(&object));
  }
  if (FAILED(result)) result = CreateBesideLibrary(which.ownClass, object);
  if (FAILED(result)) throw Error::CannotCreate(which.progId, result);
  return object;
}

}  // namespace tavio
