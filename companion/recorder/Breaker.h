#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio::companion {

// The ways in which a component breaks.
enum class Fault { kNotCreated, kMissing, kRaises, kNothing, kWrongType, kLate };

// Which call breaks how. Calls are counted from 1 by component and member, without regard to letter case; creating a
// component is the member "".
class Breaker {
 public:
  struct Breakage {
    Text component;
    Text member;
    std::int32_t call = 1;  // 0: every call
    Fault fault = Fault::kRaises;
  };

  // Answers the number by which the breakage is known.
  std::size_t Add(Breakage breakage) {
    breakage.component = ToUpper(breakage.component);
    breakage.member = ToUpper(breakage.member);
    breakages_.push_back(std::move(breakage));
    return breakages_.size() - 1;
  }
  bool IsEmpty() const noexcept { return breakages_.empty(); }

  // Counts a call, and tells how it breaks, if it does.
  std::optional<std::size_t> Count(TextView component, TextView member) {
    if (IsEmpty()) return std::nullopt;
    return Find(component, member, ++counts_[{ToUpper(component), ToUpper(member)}]);
  }
  // What Count would tell, without counting.
  std::optional<std::size_t> Next(TextView component, TextView member) {
    if (IsEmpty()) return std::nullopt;
    return Find(component, member, counts_[{ToUpper(component), ToUpper(member)}] + 1);
  }
  const Breakage& At(std::size_t number) const { return breakages_.at(number); }

 private:
  std::optional<std::size_t> Find(TextView component, TextView member, std::int32_t call) const {
    const Text upperComponent = ToUpper(component), upperMember = ToUpper(member);
    for (std::size_t i = 0; i < breakages_.size(); ++i) {
      const auto& breakage = breakages_[i];
      const bool counted = breakage.call == 0 || breakage.call == call;
      if (counted && breakage.component == upperComponent && breakage.member == upperMember) return i;
    }
    return std::nullopt;
  }

  std::vector<Breakage> breakages_;
  std::map<std::pair<Text, Text>, std::int32_t> counts_;
};

}  // namespace tavio::companion
