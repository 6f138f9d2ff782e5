#pragma once

#include "foundation/values/Value.h"

namespace tavio {

// The client's shared properties (who is logged in, where, in which language), from TavioSharedProps.PropStore for this
// process. Failures are ignored: what cannot be read is empty.

// One property: an object or a plain value.
Value GetShareProperty(TextView name) noexcept;

// The whole string of "name=value;" pairs, first argument of every call to a middle-tier component.
Text GetPropsString() noexcept;

// The value of one pair, in upper case. `key` is matched without regard to letter case.
Text GetPropValue(TextView key) noexcept;

}  // namespace tavio
