#pragma once

#include <windows.h>
#include <oleauto.h>
#include <wrl/client.h>

namespace tavio {

// Keeps the thread's pending error information over calls to helper components, and puts it back: neither logging nor
// text lookup may hide an error that is about to be reported.
class PendingError {
 public:
  PendingError() noexcept { GetErrorInfo(0, &saved_); }
  ~PendingError() {
    if (saved_) SetErrorInfo(0, saved_.Get());
  }
  PendingError(const PendingError&) = delete;
  PendingError& operator=(const PendingError&) = delete;

 private:
  Microsoft::WRL::ComPtr<IErrorInfo> saved_;
};

}  // namespace tavio
