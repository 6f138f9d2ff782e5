#pragma once

#include <windows.h>

#include <cstddef>

namespace tavio::test {

// What Windows holds for this process.
struct Held {
  std::size_t memory;  // bytes
  ULONG handles;
};

Held HeldNow();

}  // namespace tavio::test
