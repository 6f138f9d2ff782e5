#include "development/environment/Log.h"

#include <chrono>

#include "development/storage/Settings.h"

namespace tavio::development {
namespace {

constexpr std::int32_t kKept = 20000;  // entries
constexpr std::int32_t kOften = 500;   // how many are written between two looks at the old ones

// A double holds every such number exactly, and every driver takes one.
double Microseconds() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return static_cast<double>(std::chrono::duration_cast<std::chrono::microseconds>(now).count());
}

}  // namespace

Log::Log() {
  Add(L"IsEnabled", [this](Arguments&) { return Value(IsEnabled()); });
  Add(L"LogStart", [this](Arguments& a) { return Value(LogStart(a.At(0).ToText())); });
  Add(L"LogEnd", [this](Arguments& a) {
    LogEnd(a.At(0).ToInt32(), a.At(1).ToInt32());
    return Value();
  });
}

bool Log::IsEnabled() { return SettingOf(Store(), L"LogEnabled") == L"1"; }

std::int32_t Log::LogStart(const Text& label) {
  Transaction transaction(Store());
  const std::int32_t handle = ReserveIds(Store(), L"Log");
  const auto process = static_cast<std::int32_t>(GetCurrentProcessId());
  Store().Execute(L"INSERT INTO t_Log (FID, FProcessID, FLabel, FBegin) VALUES (?, ?, ?, ?)", handle, process, label,
                  Microseconds());
  if (handle % kOften == 0) Store().Execute(L"DELETE FROM t_Log WHERE FID <= ?", handle - kKept);
  transaction.Commit();
  return handle;
}

void Log::LogEnd(std::int32_t handle, std::int32_t outcome) {
  Store().Execute(L"UPDATE t_Log SET FEnd = ?, FOutcome = ? WHERE FID = ?", Microseconds(), outcome, handle);
}

}  // namespace tavio::development
