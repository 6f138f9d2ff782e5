#pragma once

#include "development/Database.h"
#include "foundation/Vector.h"

namespace tavio::development {

// The catalogue of predefined actions, in its order.
Vector ReadPredefineActions(Database& database);

}  // namespace tavio::development
