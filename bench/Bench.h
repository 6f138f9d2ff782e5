#pragma once

#include <algorithm>
#include <functional>
#include <string>

#include "foundation/packages/Dictionary.h"

namespace tavio::bench {

// Seconds that one call takes: the best of several rounds, each long enough to be measured. The best, because whatever
// else the machine does only ever adds.
double Seconds(const std::function<void()>& call);

// Seconds of one call, for what takes long enough to be measured once.
double SecondsOnce(const std::function<void()>& call);

// Seconds that one call takes on something new: the best of several rounds, each with what `prepare` has just made.
template <class Prepare, class Call>
double SecondsOnFresh(Prepare&& prepare, Call&& call) {
  constexpr int kRounds = 7;
  double best = 1e9;
  for (int round = 0; round < kRounds; ++round) {
    const auto fresh = prepare();
    best = std::min(best, SecondsOnce([&] { call(fresh); }));
  }
  return best;
}

// Prints "name: 1.23x (at most 4x)" with both times; `limit` 0 where none is set.
void PrintRatio(const std::string& name, double seconds, double baseline, double limit);

// An action collection of that many records, with codes "Action1", "Action2" and so on.
Dictionary Actions(std::int32_t count);

}  // namespace tavio::bench
