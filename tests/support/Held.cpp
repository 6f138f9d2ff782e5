#include "tests/support/Held.h"

#include <winternl.h>

#include <vector>

namespace tavio::test {

namespace {

// Counted by its pages: what the process is told to use does not change under Wine.
std::size_t PrivateMemory() {
  std::size_t bytes = 0;
  MEMORY_BASIC_INFORMATION pages;
  for (const char* at = nullptr; VirtualQuery(at, &pages, sizeof pages); at += pages.RegionSize) {
    if (pages.State == MEM_COMMIT && pages.Type == MEM_PRIVATE) bytes += pages.RegionSize;
  }
  return bytes;
}

ULONG Handles() {
  std::vector<BYTE> all(1 << 20);
  NtQuerySystemInformation(SystemProcessInformation, all.data(), static_cast<ULONG>(all.size()), nullptr);
  for (const BYTE* at = all.data();;) {
    const auto* process = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(at);
    const auto id = static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(process->UniqueProcessId));
    if (id == GetCurrentProcessId()) return process->HandleCount;
    if (!process->NextEntryOffset) return 0;
    at += process->NextEntryOffset;
  }
}

}  // namespace

Held HeldNow() { return {PrivateMemory(), Handles()}; }

}  // namespace tavio::test
