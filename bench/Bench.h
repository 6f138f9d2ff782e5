#pragma once

#include <functional>
#include <string>

#include "foundation/Dictionary.h"

namespace tavio::bench {

// Seconds that one call takes: the best of several rounds, each long enough to be measured. The best, because whatever
// else the machine does only ever adds.
double Seconds(const std::function<void()>& call);

// Prints "name: 1.23x (at most 4x)" with both times; `limit` 0 where none is set.
void PrintRatio(const std::string& name, double seconds, double baseline, double limit);

// An action collection of that many records, with codes "Action1", "Action2" and so on.
Dictionary Actions(std::int32_t count);

}  // namespace tavio::bench
