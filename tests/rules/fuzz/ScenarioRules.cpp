#include "Input.h"
#include "ScenarioModel.h"

namespace tavio::fuzz {
namespace {

void RequireWrittenOrder(const std::vector<ScenarioIndex>& parents) {
  const auto order = OrderScenarios(parents);
  const auto written = test::WrittenOrder(parents);
  Require(order.sequence == written.sequence && order.levels == written.levels);
}

}  // namespace

// Distinct masks of a byte each, moved up as far as the first byte tells, or of four.
void CheckScenarioOrder(Input input) {
  std::vector<std::int32_t> masks;
  const unsigned shift = input.Byte() % 33;
  while (!input.AtEnd()) {
    const auto mask = shift == 32 ? input.Int32() : static_cast<std::int32_t>(std::uint32_t{input.Byte()} << shift);
    if (std::ranges::find(masks, mask) == masks.end()) masks.push_back(mask);
  }
  const auto parents = ScenarioParents(masks);
  Require(parents == test::WrittenParents(masks));
  RequireWrittenOrder(parents);
}

// Any scenario may be the parent of any, so that some form rings.
void CheckScenarioRings(Input input) {
  std::vector<ScenarioIndex> parents;
  while (!input.AtEnd()) parents.push_back(input.Byte());
  for (auto& parent : parents) {
    if (parent >= parents.size()) parent = kNoScenario;
  }
  RequireWrittenOrder(parents);
}

}  // namespace tavio::fuzz
