#include "foundation/environment/modMorlaLogMsg.h"

#include "foundation/environment/PendingError.h"
#include "foundation/environment/ProcessState.h"

namespace tavio {
namespace {

// The component, if logging is on: held by the caller, since it may call the library back.
std::optional<Component> Log() {
  const auto log = Process().log;
  if (log && log->Call(L"IsEnabled").ToBool()) return log;
  Process().log.reset();
  return std::nullopt;
}

void TryToCreate() noexcept try {
  auto& process = Process();
  if (process.logCreationTried) return;
  process.logCreationTried = true;
  if (!process.log) process.log = Component::Create(L"MorlaLogMsg.Log");
} catch (...) {
}

}  // namespace

bool IsLogCalled() noexcept { return !Process().logCreationTried || Process().log; }

std::int32_t LogStart(const wchar_t* label) noexcept try {
  TryToCreate();
  const auto log = Log();
  return log ? log->Call(L"LogStart", label).ToInt32() : 0;
} catch (...) {
  return 0;
}

void LogEnd(std::int32_t handle, std::int32_t outcome) noexcept try {
  const PendingError pending;
  if (const auto log = Log()) log->Call(L"LogEnd", ByRef(handle), ByRef(outcome));
} catch (...) {
}

}  // namespace tavio
