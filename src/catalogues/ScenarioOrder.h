#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace tavio {

// Where scenarios stand in their tree and in the list that a designer reads. A scenario is named by its index in the
// scenario set.
using ScenarioIndex = std::uint32_t;

inline constexpr ScenarioIndex kNoScenario = std::numeric_limits<ScenarioIndex>::max();
inline constexpr std::int32_t kNoLevel = -1;

// The parent of each scenario: the one with the smallest mask that is greater than its own (both signed) and shares a
// bit with it; kNoScenario for a root. `masks` must be distinct. The cost is linear.
std::vector<ScenarioIndex> ScenarioParents(std::span<const std::int32_t> masks);

struct ScenarioOrder {
  std::vector<ScenarioIndex> sequence;  // every scenario once, in the order of the list
  std::vector<std::int32_t> levels;     // by index: 0 for a root, the parent's level + 1 below, kNoLevel if not placed
};

// The order as passes over a shrinking list of the unplaced scenarios produce it. A pass walks the positions of that
// list upwards and places what is a root (at the end of the sequence) or has its parent placed (directly behind the
// parent). A placed scenario leaves the list at once, so the one that moves up into its position is not met before the
// next pass. Scenarios that no pass can place (their parents form a ring) come last, in the order of the set.
//
// Hosts and stored data rely on this order, uneven as it is. The passes are not walked here: only scenarios whose
// parent is placed are looked at, and each placement makes at most one of them wait, which costs n log n however many
// passes there are.
ScenarioOrder OrderScenarios(std::span<const ScenarioIndex> parents);

}  // namespace tavio
