// The first byte of an input chooses the rule.

#include "Input.h"

namespace {

using namespace tavio::fuzz;

constexpr struct {
  char letter;
  void (*check)(Input input);
} kRules[] = {
    {'a', CheckAddressList},        {'b', CheckBillTypes},        {'c', CheckActionCodes},  {'d', CheckDecimalText},
    {'h', CheckMailText},           {'k', CheckOrderedMap},       {'m', CheckMParse},       {'o', CheckScenarioOrder},
    {'p', CheckPropsString},        {'r', CheckScenarioRings},    {'s', CheckActionStatus}, {'t', CheckTemplate},
    {'u', CheckFirstFreeRightMask}, {'x', CheckAddressSplitting},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  Input input({bytes, count});
  const auto letter = input.Byte();
  for (const auto& rule : kRules) {
    if (rule.letter != letter) continue;
    rule.check(input);
    return 0;
  }
  return 0;
}
