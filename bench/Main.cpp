#include "bench/Bench.h"

// bench [PART]     measures everything, or the lines whose work's name holds PART
// bench --check    only checks, on a hundredth of the sizes, that both sides of each line have the same results
int main(int count, char** arguments) {
  using namespace tavio::bench;
  return RunBench("bench", count, arguments, [](Bench& bench) {
    for (const auto measure : {MeasureSending, MeasureTranslation, MeasureVariables, MeasurePackages, MeasureEditing,
                               MeasureCatalogues, MeasureDispatch}) {
      measure(bench);
    }
  });
}
