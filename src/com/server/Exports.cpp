#include <windows.h>

#include <cwchar>
#include <new>

#include "com/server/ClassFactory.h"
#include "com/server/Dispatch.h"
#include "com/server/ModuleUse.h"
#include "com/server/Registration.h"

using namespace tavio::com;

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  for (const auto& row : kServer.classes) {
    if (row.id != id) continue;
    auto* factory = new (std::nothrow) ClassFactory(row);
    if (!factory) return E_OUTOFMEMORY;
    const HRESULT result = factory->QueryInterface(iid, object);
    factory->Release();
    return result;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  if (ModuleUse() != 0) return S_FALSE;
  Dispatch::ForgetAll();
  if (kServer.forget) kServer.forget();
  return ModuleUse() == 0 ? S_OK : S_FALSE;  // what was let go may have called back
}

STDAPI DllRegisterServer() { return Register(kServer, Scope::kMachine); }

STDAPI DllUnregisterServer() { return Unregister(kServer, Scope::kMachine); }

// "user" registers for the current user only, as regsvr32 /n /i:user asks for; nothing else is understood.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
  const bool perUser = commandLine && std::wcscmp(commandLine, L"user") == 0;
  if (!perUser && commandLine && *commandLine) return E_INVALIDARG;
  const Scope scope = perUser ? Scope::kUser : Scope::kMachine;
  return install ? Register(kServer, scope) : Unregister(kServer, scope);
}
