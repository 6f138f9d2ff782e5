#include "com/server/Registration.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "com/server/ClassTable.h"
#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"

namespace tavio::com {
namespace {

using Microsoft::WRL::ComPtr;

constexpr HRESULT kAccessDenied = HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
constexpr HRESULT kTakenByOthers = HRESULT_FROM_WIN32(ERROR_OBJECT_ALREADY_EXISTS);
constexpr wchar_t kClasses[] = L"Software\\Classes\\";
// What the systems answer where a type library to be removed is not registered.
constexpr HRESULT kNoTypeLibrary[] = {TYPE_E_REGISTRYACCESS, TYPE_E_LIBNOTREGISTERED, E_INVALIDARG,
                                      HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)};

std::wstring GuidText(REFGUID id) {
  wchar_t text[40];
  StringFromGUID2(id, text, 40);
  return text;
}

void CheckWin32(LSTATUS status) { Check(HRESULT_FROM_WIN32(static_cast<unsigned long>(status))); }

void WriteKey(HKEY root, const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  CheckWin32(RegSetKeyValueW(root, (kClasses + key).c_str(), name, REG_SZ, text.c_str(), bytes));
}

void RemoveTree(HKEY root, const std::wstring& key) {
  const LSTATUS status = RegDeleteTreeW(root, (kClasses + key).c_str());
  if (status != ERROR_FILE_NOT_FOUND) CheckWin32(status);
}

std::wstring ClassKey(const ClassRow& row) { return L"CLSID\\" + GuidText(row.id); }

void WriteClass(HKEY root, const ClassRow& row, const std::wstring& path) {
  const std::wstring key = ClassKey(row);
  WriteKey(root, key, nullptr, row.description);
  WriteKey(root, key + L"\\InprocServer32", nullptr, path);
  WriteKey(root, key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  WriteKey(root, key + L"\\ProgID", nullptr, row.progId);
  if (kServer.typeLibrary) WriteKey(root, key + L"\\TypeLib", nullptr, GuidText(*kServer.typeLibrary));
  WriteKey(root, row.progId, nullptr, row.description);
  WriteKey(root, std::wstring(row.progId) + L"\\CLSID", nullptr, GuidText(row.id));
}

// The functions for one user are in the system's library, but not in every compiler's headers.
template <class Function>
Function* FromOleAut(const char* name) {
  const HMODULE library = GetModuleHandleW(L"oleaut32.dll");
  auto* function = library ? reinterpret_cast<void*>(GetProcAddress(library, name)) : nullptr;
  if (!function) throw Error::FromHresult(E_NOTIMPL);
  return reinterpret_cast<Function*>(function);
}

void WriteTypeLibrary(Scope scope, const std::wstring& path) {
  if (!kServer.typeLibrary) return;
  ComPtr<ITypeLib> library;
  Check(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library));
  auto* file = const_cast<wchar_t*>(path.c_str());
  const auto registers =
      scope == Scope::kMachine ? &RegisterTypeLib : FromOleAut<decltype(RegisterTypeLib)>("RegisterTypeLibForUser");
  Check(registers(library.Get(), file, nullptr));
}

void RemoveTypeLibrary(Scope scope) {
  if (!kServer.typeLibrary) return;
  ComPtr<ITypeLib> library;
  TLIBATTR* attributes = nullptr;
  Check(LoadTypeLibEx(ModuleFile().c_str(), REGKIND_NONE, &library));
  Check(library->GetLibAttr(&attributes));
  const auto unregisters = scope == Scope::kMachine
                               ? &UnRegisterTypeLib
                               : FromOleAut<decltype(UnRegisterTypeLib)>("UnRegisterTypeLibForUser");
  const HRESULT result = unregisters(attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum,
                                     attributes->lcid, attributes->syskind);
  library->ReleaseTLibAttr(attributes);
  if (std::ranges::find(kNoTypeLibrary, result) == std::end(kNoTypeLibrary)) Check(result);
}

void RefuseForeignClasses() {
  if (!kServer.refusesForeignClasses) return;
  for (const auto& row : kServer.classes) {
    CLSID registered;
    if (FAILED(CLSIDFromProgID(row.progId, &registered)) || registered == row.id) continue;
    std::fwprintf(stderr, L"%ls: %ls is already registered by another component; nothing was registered.\n",
                  ModuleFile().c_str(), row.progId);
    throw Error(kTakenByOthers, Text(), row.progId);
  }
}

HKEY RootOf(Scope scope) noexcept { return scope == Scope::kMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

// A ProgID that leads to somebody else's class is not ours to remove.
bool IsForeign(HKEY root, const ClassRow& row) {
  wchar_t registered[40];
  DWORD bytes = sizeof(registered);
  const std::wstring key = std::wstring(kClasses) + row.progId + L"\\CLSID";
  const LSTATUS status = RegGetValueW(root, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, registered, &bytes);
  CLSID id;
  return status == ERROR_SUCCESS && SUCCEEDED(CLSIDFromString(registered, &id)) && id != row.id;
}

void RemoveAll(Scope scope) {
  RemoveTypeLibrary(scope);
  for (const auto& row : kServer.classes) {
    if (!IsForeign(RootOf(scope), row)) RemoveTree(RootOf(scope), row.progId);
    RemoveTree(RootOf(scope), ClassKey(row));
  }
  // A user without classes of his own had no such key; one with subkeys cannot be deleted.
  RegDeleteKeyW(RootOf(scope), L"Software\\Classes\\CLSID");
}

void WriteAll(Scope scope) {
  const std::wstring path = ModuleFile();
  for (const auto& row : kServer.classes) WriteClass(RootOf(scope), row, path);
  WriteTypeLibrary(scope, path);
}

template <class Step>
HRESULT Try(Step&& step) noexcept {
  try {
    step();
    return S_OK;
  } catch (...) {
    return Translate().Number();
  }
}

}  // namespace

HRESULT Register(Scope scope) noexcept {
  HRESULT result = Try(RefuseForeignClasses);
  if (FAILED(result)) return result;
  result = Try([&] { WriteAll(scope); });
  if (FAILED(result)) Try([&] { RemoveAll(scope); });
  return result == kAccessDenied && scope == Scope::kMachine ? Register(Scope::kUser) : result;
}

HRESULT Unregister(Scope scope) noexcept {
  const HRESULT result = Try([&] { RemoveAll(scope); });
  if (scope == Scope::kUser) return result;
  // A plain user's registration for the machine has landed in the user's part.
  const HRESULT fallback = Unregister(Scope::kUser);
  return result == kAccessDenied ? fallback : result;
}

}  // namespace tavio::com
