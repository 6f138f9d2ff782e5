#include "tests/support/ImportHook.h"

#include <cstring>
#include <utility>

namespace tavio::test {
namespace {

template <class Part>
Part* At(HMODULE module, DWORD offset) noexcept {
  return reinterpret_cast<Part*>(reinterpret_cast<char*>(module) + offset);
}

void** SlotOf(HMODULE module, const char* function) noexcept {
  const auto* headers = At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
  const auto imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(module, imports); imports && library->Name; ++library) {
    auto* name = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
    auto* slot = At<void*>(module, library->FirstThunk);
    for (; name->u1.AddressOfData; ++name, ++slot) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* known = At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
      if (std::strcmp(reinterpret_cast<const char*>(known->Name), function) == 0) return slot;
    }
  }
  return nullptr;
}

void* Exchange(void** slot, void* function) noexcept {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  void* const earlier = std::exchange(*slot, function);
  VirtualProtect(slot, sizeof *slot, protection, &protection);
  return earlier;
}

}  // namespace

ImportHook::ImportHook(HMODULE module, const char* function, void* replacement) noexcept
    : slot_(module ? SlotOf(module, function) : nullptr) {
  if (slot_) original_ = Exchange(slot_, replacement);
}

ImportHook::~ImportHook() {
  if (slot_) Exchange(slot_, original_);
}

}  // namespace tavio::test
