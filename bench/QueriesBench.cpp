#include <memory>
#include <string>
#include <vector>

#include "actions/BillActions.h"
#include "bench/Bench.h"
#include "bench/Roads.h"

namespace tavio::bench {
namespace {

constexpr std::int32_t kMost = 32767;
constexpr std::int32_t kTenth = 3277;

BillActions Holding(std::int32_t count) {
  BillActions holder;
  holder.SetBillActions(Actions(count));
  return holder;
}

double PlainLookUp() {
  std::vector<std::unique_ptr<std::u16string>> codes;
  for (std::int32_t i = 1; i <= kMost; ++i) {
    const auto code = L"Action" + std::to_wstring(i);
    codes.push_back(std::make_unique<std::u16string>(code.begin(), code.end()));
  }
  const std::u16string last = *codes.back();
  volatile bool found = false;
  return Seconds([&] {
    for (const auto& code : codes) {
      if (*code == last) found = true;
    }
  });
}

}  // namespace

void MeasureQueries() {
  const auto many = Holding(kMost);
  const auto few = Holding(kTenth);
  const Text last = L"Action" + std::to_wstring(kMost);
  PrintRatio("LookUp of the last of 32,767 actions / plain loop", Seconds([&] { many.LookUp(last); }), PlainLookUp(),
             8);
  const double tenth = Seconds([&] { few.GetEnvironmentItems(1); });
  PrintRatio("GetEnvironmentItems, 32,767 actions / 3,277 actions", Seconds([&] { many.GetEnvironmentItems(1); }),
             tenth, 0);
}

}  // namespace tavio::bench
