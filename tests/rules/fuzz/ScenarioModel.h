#pragma once

#include <algorithm>
#include <set>

#include "catalogues/ScenarioOrder.h"

namespace tavio::test {

// The order of scenarios as it is promised to hosts, step by step and slow: what the library's own is held against.
inline std::vector<ScenarioIndex> WrittenParents(const std::vector<std::int32_t>& masks) {
  std::vector<ScenarioIndex> parents;
  for (const auto mask : masks) {
    std::int32_t parentMask = 0;
    ScenarioIndex parent = kNoScenario;
    for (ScenarioIndex other = 0; other < masks.size(); ++other) {
      if (masks[other] <= mask || (mask & masks[other]) == 0) continue;
      if (parentMask != 0 && masks[other] >= parentMask) continue;
      parentMask = masks[other];
      parent = other;
    }
    parents.push_back(parent);
  }
  return parents;
}

inline ScenarioOrder WrittenOrder(const std::vector<ScenarioIndex>& parents) {
  ScenarioOrder order{{}, std::vector<std::int32_t>(parents.size(), kNoLevel)};
  auto& sequence = order.sequence;
  std::set<ScenarioIndex> placed;
  std::vector<ScenarioIndex> working;
  for (ScenarioIndex scenario = 0; scenario < parents.size(); ++scenario) working.push_back(scenario);
  for (bool placedAny = true; placedAny && !working.empty();) {
    placedAny = false;
    const auto count = working.size();
    for (std::size_t position = 0; position < count && position < working.size(); ++position) {
      const auto scenario = working[position];
      const auto parent = parents[scenario];
      if (placed.contains(scenario) || (parent != kNoScenario && !placed.contains(parent))) continue;
      order.levels[scenario] = parent == kNoScenario ? 0 : order.levels[parent] + 1;
      sequence.insert(parent == kNoScenario ? sequence.end() : std::ranges::find(sequence, parent) + 1, scenario);
      placed.insert(scenario);
      working.erase(working.begin() + static_cast<std::ptrdiff_t>(position));
      placedAny = true;
    }
  }
  sequence.insert(sequence.end(), working.begin(), working.end());
  return order;
}

}  // namespace tavio::test
