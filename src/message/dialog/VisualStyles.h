#pragma once

#include <windows.h>

namespace tavio {

// While it lives, windows made by this thread get the system's current look, whatever the host's own windows use: the
// module's manifest asks for that version of the common controls. Without the manifest nothing changes.
class VisualStyles {
 public:
  VisualStyles() noexcept;
  ~VisualStyles();
  VisualStyles(const VisualStyles&) = delete;
  VisualStyles& operator=(const VisualStyles&) = delete;

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
  bool active_;
};

}  // namespace tavio
