#include "companion/boxes/LibraryImports.h"

#include <cstring>

#include "companion/Members.h"
#include "companion/boxes/BoxCollector.h"

namespace tavio::companion {
namespace {

template <class T>
T* At(HMODULE module, DWORD offset) noexcept {
  return reinterpret_cast<T*>(reinterpret_cast<std::byte*>(module) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* ImportsOf(HMODULE module) noexcept {
  const auto* headers = At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  return directory.Size ? At<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress) : nullptr;
}

// The place in which a module keeps the address of a function that it imports by name; null if it does not.
void** SlotOf(HMODULE module, const char* function) noexcept {
  for (const auto* library = ImportsOf(module); library && library->Name; ++library) {
    if (_stricmp(At<char>(module, library->Name), "user32.dll") != 0 || !library->OriginalFirstThunk) continue;
    const auto* names = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
    auto* slots = At<IMAGE_THUNK_DATA>(module, library->FirstThunk);
    for (; names->u1.AddressOfData; ++names, ++slots) {
      if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
      const auto* byName = At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(names->u1.AddressOfData));
      if (std::strcmp(reinterpret_cast<const char*>(byName->Name), function) == 0) {
        return reinterpret_cast<void**>(&slots->u1.Function);
      }
    }
  }
  return nullptr;
}

void* Replace(void** slot, void* function) noexcept {
  DWORD before = 0;
  if (!slot || !VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before)) return nullptr;
  void* original = std::exchange(*slot, function);
  VirtualProtect(slot, sizeof *slot, before, &before);
  return original;
}

}  // namespace

HMODULE LibraryImports::ModuleOf(IUnknown* object) noexcept {
  HMODULE module = nullptr;
  if (!object) return nullptr;
  const auto* table = *reinterpret_cast<const wchar_t**>(object);
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, table,
                     &module);
  return module;
}

LibraryImports::LibraryImports(IUnknown* object) {
  const HMODULE module = ModuleOf(object);
  const auto slot = [&](const char* name) { return module ? SlotOf(module, name) : nullptr; };
  messageBox_.slot = slot("MessageBoxW");
  dialogBox_.slot = slot("DialogBoxIndirectParamW");
  if (!messageBox_.slot || !dialogBox_.slot) {
    throw Refused(L"The object is not one of TavioClassBillAction in this process");
  }
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(module), &module_);
  messageBox_.original = Replace(messageBox_.slot, reinterpret_cast<void*>(&AnswerMessageBox));
  dialogBox_.original = Replace(dialogBox_.slot, reinterpret_cast<void*>(&AnswerDialog));
}

LibraryImports::~LibraryImports() {
  for (const auto& patch : {messageBox_, dialogBox_}) {
    if (patch.original) Replace(patch.slot, patch.original);
  }
  if (module_) FreeLibrary(module_);
}

}  // namespace tavio::companion
