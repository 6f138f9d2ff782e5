#pragma once

#include <ostream>

#include "foundation/Vector.h"

namespace tavio::test {

// The three ways in which a container can be reached: ours lends what it stores, another one has the interface, and a
// host's own has the members' names and nothing else. New containers of each, over real ones.
struct Road {
  const char* name;
  ComPtr<IDispatch> (*newDictionary)();
  ComPtr<IDispatch> (*newVector)();
};

extern const Road kRoads[3];

inline std::ostream& operator<<(std::ostream& out, const Road& road) { return out << road.name; }

}  // namespace tavio::test
