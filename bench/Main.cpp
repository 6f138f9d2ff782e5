#include <windows.h>
#include <objbase.h>

#include "bench/Roads.h"

int main() {
  if (FAILED(CoInitialize(nullptr))) return 1;
  tavio::bench::MeasureTranslation();
  tavio::bench::MeasureQueries();
  tavio::bench::MeasureSending();
  tavio::bench::MeasureAddresses();
  tavio::bench::MeasureDispatch();
  tavio::bench::MeasureCatalogues();
  tavio::bench::MeasureEditing();
  return 0;
}
