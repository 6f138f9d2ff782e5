#include "companion/boxes/ImportPatch.h"

#include <cstring>
#include <utility>

namespace tavio::companion {
namespace {

template <class Part>
Part* At(HMODULE module, DWORD offset) noexcept {
  return reinterpret_cast<Part*>(reinterpret_cast<char*>(module) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* ImportsOf(HMODULE module) noexcept {
  const auto* headers = At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  return directory.Size ? At<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress) : nullptr;
}

// The place in which a module keeps the address of a function that it imports by name; null if it does not.
void** SlotOf(HMODULE module, const char* function) noexcept {
  for (const auto* library = ImportsOf(module); library && library->Name; ++library) {
    if (!library->OriginalFirstThunk) continue;
    const auto* names = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
    auto* slots = At<void*>(module, library->FirstThunk);
    for (; names->u1.AddressOfData; ++names, ++slots) {
      if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
      const auto* byName = At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(names->u1.AddressOfData));
      if (std::strcmp(reinterpret_cast<const char*>(byName->Name), function) == 0) return slots;
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

ImportPatch::ImportPatch(HMODULE module, const char* function, void* replacement) noexcept
    : slot_(module ? SlotOf(module, function) : nullptr), original_(Replace(slot_, replacement)) {}

ImportPatch::~ImportPatch() {
  if (original_) Replace(slot_, original_);
}

}  // namespace tavio::companion
