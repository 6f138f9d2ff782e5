#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio::com {

// How an HRESULT tells: a negative number is a failure.
using Outcome = std::int32_t;
inline constexpr Outcome kAccessDenied = static_cast<Outcome>(0x80070005);

// One thing that is written to the registry, or taken out of it. It throws nothing.
struct Step {
  Text name;
  std::function<Outcome()> run;
};
using Steps = std::vector<Step>;

// How a sequence of steps ended: well, or as `step` has, which failed first.
struct Result {
  Outcome outcome = 0;
  Text step = {};
};

// Runs every step, whatever becomes of the others.
inline Result RunAll(const Steps& steps) {
  Result first;
  for (const auto& step : steps) {
    const Outcome outcome = step.run();
    if (outcome < 0 && first.outcome >= 0) first = {outcome, step.name};
  }
  return first;
}

// Runs the steps up to the first that fails, and then all of `undo`.
inline Result RunOrUndo(const Steps& steps, const Steps& undo) {
  for (const auto& step : steps) {
    const Outcome outcome = step.run();
    if (outcome >= 0) continue;
    RunAll(undo);
    return {outcome, step.name};
  }
  return {};
}

// Where a server is registered. kMachine falls back to the current user if the machine's part of the registry is refused,
// as it is to plain users.
enum class Scope { kMachine, kUser };

// What registering a server consists of. `removal` undoes `writing`, and what others have written so is no failure to it.
struct RegistrationPlan {
  struct Part {
    Steps writing;
    Steps removal;
  };
  Steps checks;  // before anything is written
  Part machine;
  Part user;
};

// After a failure nothing is left of what was written.
inline Result Register(const RegistrationPlan& plan, Scope scope) {
  if (auto refused = RunAll(plan.checks); refused.outcome < 0) return refused;
  const auto user = [&] { return RunOrUndo(plan.user.writing, plan.user.removal); };
  if (scope == Scope::kUser) return user();
  auto machine = RunOrUndo(plan.machine.writing, plan.machine.removal);
  return machine.outcome == kAccessDenied ? user() : machine;
}

// What was meant for the machine may have landed in the user's part, so that is cleared too.
inline Result Unregister(const RegistrationPlan& plan, Scope scope) {
  const auto machine = scope == Scope::kMachine ? RunAll(plan.machine.removal) : Result();
  auto user = RunAll(plan.user.removal);
  return machine.outcome < 0 ? machine : user;
}

}  // namespace tavio::com
