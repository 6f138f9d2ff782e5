// SideBySide <folder of the package>: creates the classes through the manifests, where nothing is registered.

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "foundation/packages/Component.h"

namespace {

constexpr const wchar_t* kClasses[] = {L"TavioClassBillAction.BillActions",
                                       L"TavioClassBillAction.PredefineActions",
                                       L"TavioClassBillAction.BillEnvironments",
                                       L"TavioClassBillAction.Message",
                                       L"Vexo.Dictionary",
                                       L"Vexo.Vector",
                                       L"TavioMClass.ClassInfo",
                                       L"TavioCompanion.Checker"};

bool IsCreated(const wchar_t* name) try {
  tavio::Component::Create(name);
  return true;
} catch (...) {
  return false;
}

bool Activate(const std::filesystem::path& folder) {
  const std::filesystem::path manifest = folder / L"Host.exe.manifest";
  ACTCTXW wanted = {};
  wanted.cbSize = sizeof wanted;
  wanted.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
  wanted.lpSource = manifest.c_str();
  wanted.lpAssemblyDirectory = folder.c_str();
  const HANDLE context = CreateActCtxW(&wanted);
  ULONG_PTR cookie = 0;
  return context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) return 2;
  CoInitialize(nullptr);
  if (std::ranges::any_of(kClasses, &IsCreated)) return std::cout << "FAILED: something is registered\n", 1;
  if (!Activate(std::filesystem::canonical(argv[1]))) return std::cout << "FAILED: no context\n", 1;
  if (!std::ranges::all_of(kClasses, &IsCreated)) return std::cout << "FAILED: not all were created\n", 1;
  std::cout << "finished\n";
  return 0;
}
