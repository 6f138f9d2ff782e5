// What follows initguid.h is defined here, and must follow it.
// clang-format off
#include <windows.h>
#include <initguid.h>
#include <TavioCompanion.h>
// clang-format on

#include "companion/tavio/Session.h"

#include "companion/recorder/Secrets.h"
#include "companion/tavio/Console.h"
#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"

namespace tavio {
namespace {

HRESULT CreateBesideProgram(const CLSID& id, ComPtr<IDispatch>& object) {
  const HMODULE library = LoadLibraryW((GetAppFolder() + L"TavioCompanion.dll").c_str());
  if (!library) return REGDB_E_CLASSNOTREG;
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto getClassObject =
      reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  if (!getClassObject) return REGDB_E_CLASSNOTREG;
  const HRESULT result = getClassObject(id, IID_PPV_ARGS(&factory));
  return FAILED(result) ? result : factory->CreateInstance(nullptr, IID_PPV_ARGS(&object));
}

}  // namespace

Component CreateCompanion(const wchar_t* progId, const CLSID& id) {
  ComPtr<IDispatch> object;
  if (SUCCEEDED(CreateBesideProgram(id, object))) return Component(std::move(object));
  return Component::Create(progId);
}

Session::Session() { Check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }

Session::~Session() {
  try {
    TellBoxes();
  } catch (const Error&) {
    // Whoever ends has no use for a failure.
  }
  boxes_ = Component(nullptr);
  CoUninitialize();
}

void Session::Unattended() {
  boxes_ = CreateCompanion(L"TavioCompanion.Boxes", __uuidof(::Boxes));
  boxes_.Call(L"Start");
}

void Session::TellBoxes() const {
  if (!boxes_.Object()) return;
  const Vector shown(boxes_.Read(L"Shown"));
  const auto count = shown.Count();
  for (std::int32_t i = 1; i <= count; ++i) {
    const auto box = shown.Record(i);
    const Text text = companion::WithoutSecrets(box.Get(L"FText"_key)->ToText());
    console::PrintError(L"[" + box.Get(L"FTitle"_key)->ToText() + L"] " + text + L"\n");
  }
  boxes_.Call(L"Stop");
}

}  // namespace tavio
