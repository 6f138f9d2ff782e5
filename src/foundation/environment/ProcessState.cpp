#include "foundation/environment/ProcessState.h"

namespace tavio {

ProcessState& Process() noexcept {
  static auto& state = *new ProcessState;  // no destructor: see the header
  return state;
}

}  // namespace tavio
