#include "companion/tavio/Progress.h"

#include <chrono>
#include <string>

#include "companion/tavio/Console.h"

namespace tavio {

Progress::Progress(Text what) : what_(std::move(what)) {
  if (console::HasErrorConsole()) watcher_ = std::thread([this] { Watch(); });
}

Progress::~Progress() {
  if (!watcher_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    hasEnded_ = true;
  }
  ended_.notify_one();
  watcher_.join();
}

void Progress::Watch() {
  std::unique_lock lock(mutex_);
  for (int seconds = 1; !ended_.wait_for(lock, std::chrono::seconds(1), [&] { return hasEnded_; }); ++seconds) {
    console::PrintError(L"\r" + what_ + L" ... " + std::to_wstring(seconds) + L" s ");
  }
  console::PrintError(L"\r");
}

}  // namespace tavio
