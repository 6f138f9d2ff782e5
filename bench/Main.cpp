#include <windows.h>
#include <objbase.h>

#include <cstdio>
#include <exception>
#include <string>

#include "bench/Bench.h"
#include "foundation/values/Error.h"
#include "tests/support/Packages.h"

// bench [PART]     measures everything, or the lines whose work's name holds PART
// bench --check    only checks, on a hundredth of the sizes, that both sides of each line have the same results
int main(int count, char** arguments) try {
  using namespace tavio::bench;
  if (FAILED(CoInitialize(nullptr))) return 1;
  const std::string asked = count > 1 ? arguments[1] : "";
  const bool checksOnly = asked == "--check";
  Bench bench(checksOnly, checksOnly ? "" : asked);
  for (const auto measure : {MeasureSending, MeasureTranslation, MeasureVariables, MeasurePackages, MeasureEditing,
                             MeasureCatalogues, MeasureDispatch}) {
    measure(bench);
  }
  std::puts("finished");
  return 0;
} catch (const tavio::Error& error) {
  std::fprintf(stderr, "bench: %s\n", tavio::test::Utf8(error.Description()).c_str());
  return 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "bench: %s\n", error.what());
  return 1;
}
