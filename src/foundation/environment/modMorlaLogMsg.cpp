#include "foundation/environment/modMorlaLogMsg.h"

#include "foundation/environment/PendingError.h"
#include "foundation/environment/ProcessState.h"

namespace tavio {
namespace {

bool IsOn() {
  auto& process = Process();
  if (process.log && !process.log->Call(L"IsEnabled").ToBool()) process.log.reset();
  return process.log.has_value();
}

void TryToCreate() noexcept try {
  auto& process = Process();
  if (process.logCreationTried) return;
  process.logCreationTried = true;
  if (!process.log) process.log = Component::Create(L"MorlaLogMsg.Log");
} catch (...) {
}

}  // namespace

std::int32_t LogStart(const wchar_t* label) noexcept try {
  TryToCreate();
  return IsOn() ? Process().log->Call(L"LogStart", label).ToInt32() : 0;
} catch (...) {
  return 0;
}

void LogEnd(std::int32_t handle, std::int32_t outcome) noexcept try {
  const PendingError pending;
  if (IsOn()) Process().log->Call(L"LogEnd", ByRef(handle), ByRef(outcome));
} catch (...) {
}

}  // namespace tavio
