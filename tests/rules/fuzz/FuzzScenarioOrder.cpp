#include <cstdlib>
#include <cstring>

#include "WrittenScenarioOrder.h"

using namespace tavio;

// Holds the order of any distinct masks against the passes as written. The first byte narrows the masks, so that few
// bytes make deep trees.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto shift = data[0] % 32;
  std::vector<std::int32_t> masks;
  for (std::size_t at = 1; at + sizeof(std::int32_t) <= size; at += sizeof(std::int32_t)) {
    std::int32_t mask = 0;
    std::memcpy(&mask, data + at, sizeof mask);
    mask >>= shift;
    if (std::ranges::find(masks, mask) == masks.end()) masks.push_back(mask);
  }
  const auto parents = ScenarioParents(masks);
  if (parents != testing::WrittenParents(masks)) std::abort();
  const auto order = OrderScenarios(parents);
  const auto written = testing::WrittenOrder(parents);
  if (order.sequence != written.sequence || order.levels != written.levels) std::abort();
  return 0;
}
