#pragma once

#include <windows.h>

namespace tavio::com {

// Where the classes are registered. kMachine falls back to the current user where the machine's part of the registry is
// refused, as it is to plain users.
enum class Scope { kMachine, kUser };

// Registers every class of the server table and its type library. After a failure nothing of it is left.
HRESULT Register(Scope scope) noexcept;

// Removes every key that Register makes, in the given scope or its fallback. Keys that are not there are no failure.
HRESULT Unregister(Scope scope) noexcept;

}  // namespace tavio::com
