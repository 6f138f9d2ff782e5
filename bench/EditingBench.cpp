#include <memory>
#include <string>
#include <vector>

#include "actions/BillActions.h"
#include "bench/Bench.h"
#include "bench/Roads.h"

namespace tavio::bench {
namespace {

constexpr std::int32_t kActions = 10000;

void AddOneByOne(const Dictionary& actions) {
  BillActions holder;
  holder.ClassTypeID(1005);
  for (std::int32_t i = 1; i <= kActions; ++i) holder.AddNew(Dictionary(actions.At(i).Stored()));
}

// For each action, the codes of those before it, read from the packages.
std::int32_t WalkPackages(const Dictionary& actions) {
  std::int32_t found = 0;
  const Text absent = L"Action0";
  for (std::int32_t n = 1; n <= kActions; ++n) {
    for (std::int32_t i = 1; i < n; ++i) {
      const Dictionary action(actions.At(i).Stored());
      if (action.Get(L"FCode"_key)->EqualsText(absent)) ++found;
    }
  }
  return found;
}

std::size_t WalkTexts(const std::vector<std::unique_ptr<std::u16string>>& codes) {
  std::size_t found = 0;
  const std::u16string absent = u"Action0absent";
  for (std::size_t n = 0; n < codes.size(); ++n) {
    for (std::size_t i = 0; i < n; ++i) {
      if (*codes[i] == absent) ++found;
    }
  }
  return found;
}

}  // namespace

void MeasureEditing() {
  const auto actions = Actions(kActions);
  std::vector<std::unique_ptr<std::u16string>> codes;
  for (std::int32_t i = 1; i <= kActions; ++i) {
    const auto code = actions.Name(i);
    codes.push_back(std::make_unique<std::u16string>(code.begin(), code.end()));
  }
  volatile std::size_t found = 0;  // keeps the plain loops from being left out
  const double adding = SecondsOnce([&] { AddOneByOne(actions); });
  PrintRatio("AddNew of 10,000 actions / a plain loop over the packages", adding,
             SecondsOnce([&] { found = static_cast<std::size_t>(WalkPackages(actions)); }), 3);
  PrintRatio("AddNew of 10,000 actions / a plain loop over texts", adding,
             SecondsOnce([&] { found = WalkTexts(codes); }), 0);
}

}  // namespace tavio::bench
