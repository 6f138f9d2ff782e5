#include "com/server/Registration.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <iterator>

#include "com/server/ComClass.h"
#include "com/server/TypeDescription.h"
#include "foundation/values/OwnModule.h"

namespace tavio::com {
namespace {

using Microsoft::WRL::ComPtr;

constexpr HRESULT kTakenByOthers = HRESULT_FROM_WIN32(ERROR_OBJECT_ALREADY_EXISTS);
// What processes of each kind see of the registry. On a 32-bit Windows both are the same.
constexpr REGSAM kViews[] = {KEY_WOW64_32KEY, KEY_WOW64_64KEY};
constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
bool HasOtherView() noexcept {
  BOOL emulated = FALSE;
  return sizeof(void*) == 8 || (IsWow64Process(GetCurrentProcess(), &emulated) && emulated);
}

constexpr REGSAM kRemoving = DELETE | KEY_READ | KEY_SET_VALUE;

Text GuidText(REFGUID id) {
  wchar_t text[40];
  StringFromGUID2(id, text, 40);
  return text;
}

void CheckWin32(LSTATUS status) { Check(HRESULT_FROM_WIN32(static_cast<unsigned long>(status))); }

// The classes of the machine or of the current user. Keys are named from there.
class Classes {
 public:
  explicit Classes(Scope scope) noexcept : root_(scope == Scope::kMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER) {}

  void Write(const Text& key, const wchar_t* name, const Text& text) const {
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    CheckWin32(RegSetKeyValueW(root_, Path(key).c_str(), name, REG_SZ, text.c_str(), bytes));
  }

  // Unset if there is no such key.
  RegistryKey Open(const Text& key, REGSAM access) const {
    RegistryKey opened;
    const LSTATUS status = RegOpenKeyExW(root_, Path(key).c_str(), 0, access, opened.Receive());
    if (status != ERROR_FILE_NOT_FOUND) CheckWin32(status);
    return opened;
  }

  void Remove(const Text& key, REGSAM view = 0) const {
    const RegistryKey tree = Open(key, kRemoving | view);
    if (!tree) return;
    CheckWin32(RegDeleteTreeW(tree.Get(), nullptr));
    CheckWin32(RegDeleteKeyExW(root_, Path(key).c_str(), view, 0));
  }

  // One with subkeys stays.
  void RemoveIfEmpty(const Text& key) const { RegDeleteKeyW(root_, Path(key).c_str()); }

 private:
  static Text Path(const Text& key) { return L"Software\\Classes\\" + key; }

  HKEY root_;
};

Text ClassKey(const ClassRow& row) { return L"CLSID\\" + GuidText(row.id); }

ComPtr<ITypeLib> OwnTypeLibrary() {
  ComPtr<ITypeLib> library;
  Check(LoadTypeLibEx(ModuleFile().c_str(), REGKIND_NONE, &library));
  return library;
}

LibraryDescription OwnDescription() {
  const auto library = OwnTypeLibrary();
  TLIBATTR* lent = nullptr;
  Check(library->GetLibAttr(&lent));
  return LibraryDescription({library, lent});
}

void WriteClass(const Classes& classes, const ServerTable& server, const ClassRow& row) {
  const Text key = ClassKey(row);
  classes.Write(key, nullptr, row.description);
  classes.Write(key + L"\\InprocServer32", nullptr, ModuleFile());
  classes.Write(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  classes.Write(key + L"\\ProgID", nullptr, row.progId);
  if (server.hasTypeLibrary) classes.Write(key + L"\\TypeLib", nullptr, GuidText(OwnDescription().Get()->guid));
}

void WriteProgId(const Classes& classes, const ClassRow& row) {
  classes.Write(row.progId, nullptr, row.description);
  classes.Write(Text(row.progId) + L"\\CLSID", nullptr, GuidText(row.id));
}

bool IsForeign(const Classes& classes, const ClassRow& row, REGSAM view) {
  wchar_t registered[40];
  DWORD bytes = sizeof(registered);
  CLSID id;
  const RegistryKey key = classes.Open(Text(row.progId) + L"\\CLSID", KEY_READ | view);
  return key &&
         RegGetValueW(key.Get(), nullptr, nullptr, RRF_RT_REG_SZ, nullptr, registered, &bytes) == ERROR_SUCCESS &&
         SUCCEEDED(CLSIDFromString(registered, &id)) && id != row.id;
}

// Both kinds of processes share ProgIDs on Windows, though not under Wine.
void RemoveProgId(const Classes& classes, const ClassRow& row) {
  if (HasOtherView() && classes.Open(ClassKey(row), KEY_READ | kOtherView)) return;
  for (const REGSAM view : kViews) {
    if (!IsForeign(classes, row, view)) classes.Remove(row.progId, view);
  }
}

// The functions for one user are in the system's library, but not in every compiler's headers.
template <class Function>
Function* FromOleAut(const char* name) {
  const HMODULE library = GetModuleHandleW(L"oleaut32.dll");
  auto* function = library ? reinterpret_cast<void*>(GetProcAddress(library, name)) : nullptr;
  if (!function) throw Error::FromHresult(E_NOTIMPL);
  return reinterpret_cast<Function*>(function);
}

void WriteTypeLibrary(Scope scope) {
  Text path = ModuleFile();
  const auto registers =
      scope == Scope::kMachine ? &RegisterTypeLib : FromOleAut<decltype(RegisterTypeLib)>("RegisterTypeLibForUser");
  Check(registers(OwnTypeLibrary().Get(), path.data(), nullptr));
}

bool HasTypeLibrary(Scope scope, const TLIBATTR& library) {
  wchar_t version[40];
  std::swprintf(version, std::size(version), L"\\%x.%x\\%lx\\", library.wMajorVerNum, library.wMinorVerNum,
                library.lcid);
  const wchar_t* system = library.syskind == SYS_WIN64 ? L"win64" : L"win32";
  return bool(Classes(scope).Open(L"TypeLib\\" + GuidText(library.guid) + version + system, KEY_READ));
}

// The systems differ in how they tell that there is none, and tell the same of one that they may not remove.
void RemoveTypeLibrary(Scope scope) {
  const auto description = OwnDescription();
  const TLIBATTR& own = *description.Get().lent;
  const auto unregisters = scope == Scope::kMachine
                               ? &UnRegisterTypeLib
                               : FromOleAut<decltype(UnRegisterTypeLib)>("UnRegisterTypeLibForUser");
  const HRESULT result = unregisters(own.guid, own.wMajorVerNum, own.wMinorVerNum, own.lcid, own.syskind);
  if (FAILED(result) && HasTypeLibrary(scope, own)) throw Error::FromHresult(result);
}

void RefuseForeign(const ClassRow& row) {
  CLSID registered;
  if (SUCCEEDED(CLSIDFromProgID(row.progId, &registered)) && registered != row.id) Check(kTakenByOthers);
}

template <class Body>
Step Named(Text name, Body body) {
  return {std::move(name), [body] {
            return Guarded([&] {
              body();
              return S_OK;
            });
          }};
}

// Classes first, so that what is left after a failure creates nothing.
Steps Removal(const ServerTable& server, Scope scope) {
  const Classes classes(scope);
  const Text whose = scope == Scope::kUser ? L"remove the user's " : L"remove ";
  Steps steps;
  for (const auto& row : server.classes) {
    steps.push_back(Named(whose + L"class " + row.progId, [=, &row] { classes.Remove(ClassKey(row)); }));
  }
  for (const auto& row : server.classes) {
    steps.push_back(Named(whose + L"name " + row.progId, [=, &row] { RemoveProgId(classes, row); }));
  }
  if (server.hasTypeLibrary) steps.push_back(Named(whose + L"type library", [=] { RemoveTypeLibrary(scope); }));
  // A user without classes of his own had no such key.
  if (scope == Scope::kUser) steps.push_back(Named(whose + L"empty key", [=] { classes.RemoveIfEmpty(L"CLSID"); }));
  return steps;
}

// The type library comes last: Wine keeps a user's in the machine's part.
Steps Writing(const ServerTable& server, Scope scope) {
  const Classes classes(scope);
  Steps steps;
  for (const auto& row : server.classes) {
    steps.push_back(Named(Text(L"class ") + row.progId, [=, &server, &row] { WriteClass(classes, server, row); }));
    steps.push_back(Named(Text(L"name ") + row.progId, [=, &row] { WriteProgId(classes, row); }));
  }
  if (scope == Scope::kMachine) std::ranges::move(Removal(server, Scope::kUser), std::back_inserter(steps));
  if (server.hasTypeLibrary) steps.push_back(Named(L"type library", [=] { WriteTypeLibrary(scope); }));
  return steps;
}

HRESULT Carry(Result (*out)(const RegistrationPlan&, Scope), const ServerTable& server, Scope scope) noexcept {
  return Guarded([&] {
    const Result result = out(PlanFor(server), scope);
    if (result.outcome < 0) {
      std::fwprintf(stderr, L"%ls: %ls: 0x%08lX\n", ModuleFile().c_str(), result.step.c_str(),
                    static_cast<unsigned long>(result.outcome));
    }
    return HRESULT{result.outcome};
  });
}

}  // namespace

RegistrationPlan PlanFor(const ServerTable& server) {
  RegistrationPlan plan;
  for (const auto& row : server.classes) {
    if (!server.refusesForeignClasses) break;
    plan.checks.push_back(Named(Text(row.progId) + L" belongs to another component", [&row] { RefuseForeign(row); }));
  }
  plan.machine = {Writing(server, Scope::kMachine), Removal(server, Scope::kMachine)};
  plan.user = {Writing(server, Scope::kUser), Removal(server, Scope::kUser)};
  return plan;
}

HRESULT Register(const ServerTable& server, Scope scope) noexcept { return Carry(&Register, server, scope); }
HRESULT Unregister(const ServerTable& server, Scope scope) noexcept { return Carry(&Unregister, server, scope); }

}  // namespace tavio::com
