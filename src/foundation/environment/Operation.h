#pragma once

#include <cstdint>
#include <functional>
#include <type_traits>

#include "foundation/values/Error.h"

namespace tavio {

inline constexpr wchar_t kDescriptionOnly[] = L"";

// What differs between public operations apart from what they do.
struct Labels {
  // Label of the begin and end log entries; null if none are written.
  const wchar_t* log = nullptr;
  // First line of the failure box; null if failures are silent, kDescriptionOnly if the box has no such line.
  const wchar_t* report = nullptr;
  // After a failure the result is dropped, or kept as far as it was built.
  enum { kDropped, kKept } resultAfterFailure = kDropped;
  // Outcomes written to the end log entry.
  std::int32_t outcome = 1;
  std::int32_t outcomeAfterFailure = 0;
  // The end entry is written as one more begin entry.
  bool closesWithBegin = false;
};

// Runs `body` between the log entries; answers whether it ended without a failure. On failure, `dropResult` runs before
// the failure is reported. `body` may change the outcome that it is given. Nothing is ever thrown.
bool RunTrapped(const Labels& labels, const std::function<void(std::int32_t&)>& body,
                const std::function<void()>& dropResult) noexcept;

// The boundary of every public operation: `body` takes a reference to the result, which starts empty, and, if it
// asks for it, a reference to the log outcome.
template <class Result, class Body>
Result Operation(const Labels& labels, Body&& body) noexcept {
  Result result{};
  const auto run = [&](std::int32_t& outcome) {
    if constexpr (std::is_invocable_v<Body&, Result&, std::int32_t&>) {
      body(result, outcome);
    } else {
      body(result);
    }
  };
  const auto drop = [&] {
    if (labels.resultAfterFailure == Labels::kDropped) result = Result{};
  };
  RunTrapped(labels, std::ref(run), std::ref(drop));
  return result;
}

// The same for an operation without a result.
template <class Body>
void Operation(const Labels& labels, Body&& body) noexcept {
  const auto run = [&](std::int32_t&) { body(); };
  RunTrapped(labels, std::ref(run), [] {});
}

}  // namespace tavio
