#include "com/server/ModuleUse.h"

#include <windows.h>

namespace tavio::com {
namespace {

long useCount = 0;

}  // namespace

void HoldModule() noexcept { InterlockedIncrement(&useCount); }
void LetModuleGo() noexcept { InterlockedDecrement(&useCount); }
long ModuleUse() noexcept { return useCount; }

}  // namespace tavio::com
