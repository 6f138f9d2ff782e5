#pragma once

#include <windows.h>

#include "com/server/ClassTable.h"
#include "com/server/RegistrationPlan.h"

namespace tavio::com {

// The steps for the classes of a server and its type library. What is registered for the machine takes the server's own
// classes out of the user's part, which would stand in front of it. A ProgID that leads to somebody else's class stays,
// and so does one whose class the other kind of processes (32 or 64 bits) still finds. Throws.
RegistrationPlan PlanFor(const ServerTable& server);

// Carries the plan out. What failed is told on the error output, too.
HRESULT Register(const ServerTable& server, Scope scope) noexcept;
HRESULT Unregister(const ServerTable& server, Scope scope) noexcept;

}  // namespace tavio::com
