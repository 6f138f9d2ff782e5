#include "tests/rules/WrittenScenarioOrder.h"
#include "tests/rules/fuzz/Fuzz.h"

using namespace tavio;

// The order of any distinct masks is that of the passes as written. The first byte narrows the masks, so that few bytes
// make deep trees.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  if (count == 0) return 0;
  std::vector<std::int32_t> masks;
  for (std::size_t at = 1; at + sizeof(std::int32_t) <= count; at += sizeof(std::int32_t)) {
    std::int32_t mask = 0;
    std::memcpy(&mask, bytes + at, sizeof mask);
    mask >>= bytes[0] % 32;
    if (std::ranges::find(masks, mask) == masks.end()) masks.push_back(mask);
  }
  const auto parents = ScenarioParents(masks);
  Require(parents == test::WrittenParents(masks));
  const auto order = OrderScenarios(parents);
  const auto written = test::WrittenOrder(parents);
  Require(order.sequence == written.sequence && order.levels == written.levels);
  return 0;
}
