#pragma once

namespace tavio::com {

// What keeps this server loaded: every living object and every lock of a class factory counts once.
void HoldModule() noexcept;
void LetModuleGo() noexcept;
long ModuleUse() noexcept;

}  // namespace tavio::com
