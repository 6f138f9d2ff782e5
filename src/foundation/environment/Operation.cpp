#include "foundation/environment/Operation.h"

#include "foundation/environment/ShowMessage.h"
#include "foundation/environment/modMorlaLogMsg.h"

namespace tavio {
namespace {

void ReportQuietly(const wchar_t* label, const Error& error) noexcept try {
  if (label) ReportFailure(label, error);
} catch (...) {
}

void Close(const Labels& labels, std::int32_t handle, std::int32_t outcome) noexcept {
  if (!labels.log) return;
  if (labels.closesWithBegin) {
    LogStart(labels.log);
  } else {
    LogEnd(handle, outcome);
  }
}

}  // namespace

bool RunTrapped(const Labels& labels, const std::function<void(std::int32_t&)>& body,
                const std::function<void()>& dropResult) noexcept {
  const std::int32_t handle = labels.log ? LogStart(labels.log) : 0;
  std::int32_t outcome = labels.outcome;
  bool done = false;
  try {
    body(outcome);
    done = true;
  } catch (...) {
    const Error error = Translate();
    dropResult();
    ReportQuietly(labels.report, error);
    outcome = labels.outcomeAfterFailure;
  }
  Close(labels, handle, outcome);
  return done;
}

}  // namespace tavio
