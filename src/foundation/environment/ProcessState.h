#pragma once

#include <cstdint>
#include <optional>

#include "foundation/packages/Component.h"

namespace tavio {

// What hosts can notice of what is kept between operations, once per loaded library. When the library is unloaded, the
// components are not released: theirs may already be gone.
struct ProcessState {
  std::optional<Component> log;
  bool logCreationTried = false;
  std::optional<Component> resourceLoader;
  Text language;
  // Hooks that take precedence over the shared-properties component; nothing in the library assigns them.
  Text propsOverride;
  std::optional<Component> propsOverrideObject;
};

ProcessState& Process() noexcept;

}  // namespace tavio
