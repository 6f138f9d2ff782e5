#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include "foundation/values/Text.h"

namespace tavio {

// Tells somebody at a console what is being done, once it takes longer than a second.
class Progress {
 public:
  explicit Progress(Text what);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

 private:
  void Watch();

  Text what_;
  std::mutex mutex_;
  std::condition_variable ended_;
  bool hasEnded_ = false;
  std::thread watcher_;
};

}  // namespace tavio
