#include "companion/boxes/LibraryImports.h"

#include "companion/Members.h"
#include "companion/boxes/BoxCollector.h"

namespace tavio::companion {
namespace {

HMODULE ModuleAt(IUnknown* object, DWORD flags) noexcept {
  HMODULE module = nullptr;
  if (!object) return nullptr;
  const auto* table = *reinterpret_cast<const wchar_t**>(object);
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flags, table, &module);
  return module;
}

}  // namespace

LibraryImports::Loaded::~Loaded() {
  if (handle) FreeLibrary(handle);
}

HMODULE LibraryImports::ModuleOf(IUnknown* object) noexcept {
  return ModuleAt(object, GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
}

LibraryImports::LibraryImports(IUnknown* object)
    : module_{ModuleAt(object, 0)},
      messageBox_(Module(), "MessageBoxW", reinterpret_cast<void*>(&AnswerMessageBox)),
      dialogBox_(Module(), "DialogBoxIndirectParamW", reinterpret_cast<void*>(&AnswerDialog)) {
  if (!messageBox_ || !dialogBox_) throw Refused(L"The object is not one of TavioClassBillAction in this process");
}

}  // namespace tavio::companion
