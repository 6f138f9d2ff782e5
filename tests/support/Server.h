#pragma once

#include <windows.h>
#include <oaidl.h>

#include <string>
#include <vector>

#include "foundation/values/Error.h"
#include "foundation/values/Value.h"

// The servers as hosts load them: by their files, without registration.

namespace tavio::test {

// A function that a module exports; null if there is no module.
template <class Function>
Function Exported(HMODULE module, const char* name) noexcept {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(module ? GetProcAddress(module, name) : nullptr));
}

// A new object of a loaded server.
template <class Interface = IDispatch>
ComPtr<Interface> Make(HMODULE server, REFCLSID id) {
  ComPtr<IClassFactory> factory;
  ComPtr<Interface> object;
  Check(Exported<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(server, "DllGetClassObject")(
      id, IID_PPV_ARGS(&factory)));
  Check(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)));
  return object;
}

// S_OK if nothing of the server is alive, or it is not loaded.
HRESULT CanUnload(const Text& server);

// What a server's type library tells of a member.
struct Parameter {
  VARTYPE type;
  bool byReference, isResult;
  std::string otherwise = {};  // what it is if it is left out, as Show has it
};
struct Member {
  std::string name, description;
  DISPID id;
  WORD kind;
  ULONG_PTR place;  // in the interface's table
  std::vector<Parameter> parameters = {};
};

// An interface's own members.
std::vector<Member> MembersOf(const Text& server, REFIID iid);

}  // namespace tavio::test
