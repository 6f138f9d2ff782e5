#pragma once

#include "development/storage/Database.h"
#include "foundation/packages/Vector.h"

namespace tavio::development {

// The catalogue of predefined actions, in its order.
Vector ReadPredefineActions(Database& database);

}  // namespace tavio::development
