#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// MorlaLogMsg.Log: the timing log, in t_Log. Times are microseconds since 1970 (UTC). The setting LogEnabled
// (Settings.h) switches it on and off.
// The last 20,000 entries are kept.
//   IsEnabled()   LogStart(label) -> handle   LogEnd(handle, outcome)
class Log final : public PlatformObject {
 public:
  Log();

 private:
  bool IsEnabled();
  std::int32_t LogStart(const Text& label);
  void LogEnd(std::int32_t handle, std::int32_t outcome);
};

}  // namespace tavio::development
