#include "catalogues/ScenarioOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <numeric>
#include <queue>
#include <utility>

namespace tavio {
namespace {

class Passes {
 public:
  explicit Passes(std::span<const ScenarioIndex> parents)
      : parents_(parents),
        unplaced_(static_cast<ScenarioIndex>(parents.size())),
        sequence_(unplaced_ + 1),
        links_(parents.size() + 2),
        families_(parents.size()),
        levels_(parents.size(), kNoLevel) {
    links_[unplaced_] = {unplaced_, unplaced_};
    links_[sequence_] = {sequence_, sequence_};
    for (ScenarioIndex scenario = 0; scenario < unplaced_; ++scenario) Enter(scenario);
  }

  ScenarioOrder Run() && {
    while (!visits_.empty()) {
      const auto visit = visits_.top();
      visits_.pop();
      Meet(static_cast<std::uint32_t>(visit >> 32), static_cast<ScenarioIndex>(visit));
    }
    return {Sequence(), std::move(levels_)};
  }

 private:
  // A scenario's place in the one ring that it is in: the unplaced or the sequence. Behind the scenarios' links stand
  // those that head the two rings.
  struct Link {
    ScenarioIndex next;
    ScenarioIndex previous;
  };
  struct Family {
    ScenarioIndex firstChild = kNoScenario;
    ScenarioIndex sibling = kNoScenario;
  };

  void Enter(ScenarioIndex scenario) {
    PutBehind(links_[unplaced_].previous, scenario);
    const auto parent = parents_[scenario];
    if (parent == kNoScenario) return Visit(0, scenario);
    families_[scenario].sibling = std::exchange(families_[parent].firstChild, scenario);
  }

  // Notes the first pass that comes to `scenario` after its parent was placed.
  void Visit(std::uint32_t pass, ScenarioIndex scenario) { visits_.push(std::uint64_t{pass} << 32 | scenario); }

  void Meet(std::uint32_t pass, ScenarioIndex scenario) {
    if (pass != pass_) movedUp_ = kNoScenario;
    pass_ = pass;
    if (scenario == movedUp_) {
      Visit(pass + 1, scenario);
    } else {
      Place(scenario);
    }
  }

  void Place(ScenarioIndex scenario) {
    const auto parent = parents_[scenario];
    levels_[scenario] = parent == kNoScenario ? 0 : levels_[parent] + 1;
    movedUp_ = TakeOut(scenario);
    PutBehind(parent == kNoScenario ? links_[sequence_].previous : parent, scenario);
    for (auto child = families_[scenario].firstChild; child != kNoScenario; child = families_[child].sibling) {
      Visit(child > scenario ? pass_ : pass_ + 1, child);
    }
  }

  // Answers what stood behind it.
  ScenarioIndex TakeOut(ScenarioIndex scenario) {
    const auto [next, previous] = links_[scenario];
    links_[previous].next = next;
    links_[next].previous = previous;
    return next;
  }

  void PutBehind(ScenarioIndex place, ScenarioIndex scenario) {
    const auto next = std::exchange(links_[place].next, scenario);
    links_[next].previous = scenario;
    links_[scenario] = {next, place};
  }

  std::vector<ScenarioIndex> Sequence() const {
    std::vector<ScenarioIndex> sequence;
    sequence.reserve(parents_.size());
    for (const auto head : {sequence_, unplaced_}) {
      for (auto at = links_[head].next; at != head; at = links_[at].next) sequence.push_back(at);
    }
    return sequence;
  }

  std::span<const ScenarioIndex> parents_;
  const ScenarioIndex unplaced_;
  const ScenarioIndex sequence_;
  std::vector<Link> links_;
  std::vector<Family> families_;
  std::vector<std::int32_t> levels_;
  // By pass, then by position: the set's order is the order of the unplaced in every pass.
  std::priority_queue<std::uint64_t, std::vector<std::uint64_t>, std::greater<>> visits_;
  std::uint32_t pass_ = 0;
  ScenarioIndex movedUp_ = kNoScenario;
};

// One step of a radix sort: `from` into `to` by eight bits of the masks, greater ones first, keeping the order of
// equals.
void SortByDigit(std::span<const std::int32_t> masks, unsigned shift, const std::vector<ScenarioIndex>& from,
                 std::vector<ScenarioIndex>& to) {
  constexpr std::uint32_t kAllButSign = 0x7FFFFFFF;
  const auto digit = [&](ScenarioIndex scenario) {
    return ((static_cast<std::uint32_t>(masks[scenario]) ^ kAllButSign) >> shift) & 0xFFu;
  };
  std::array<std::size_t, 257> starts{};
  for (const auto scenario : from) ++starts[digit(scenario) + 1];
  for (std::size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
  for (const auto scenario : from) to[starts[digit(scenario)]++] = scenario;
}

// Linear, where a comparing sort of random masks would cost more than everything else here.
std::vector<ScenarioIndex> ByDescendingMask(std::span<const std::int32_t> masks) {
  std::vector<ScenarioIndex> scenarios(masks.size());
  std::iota(scenarios.begin(), scenarios.end(), ScenarioIndex{0});
  std::vector<ScenarioIndex> spare(masks.size());
  for (unsigned shift = 0; shift < 32; shift += 8) {
    SortByDigit(masks, shift, scenarios, spare);
    scenarios.swap(spare);
  }
  return scenarios;
}

}  // namespace

std::vector<ScenarioIndex> ScenarioParents(std::span<const std::int32_t> masks) {
  std::vector<ScenarioIndex> parents(masks.size(), kNoScenario);
  const auto places = ByDescendingMask(masks);
  // By bit: the place, counted from 1, of the smallest mask so far that has it; 0 for none.
  std::array<std::size_t, 32> smallest{};
  for (std::size_t place = 0; place < places.size(); ++place) {
    const auto scenario = places[place];
    std::size_t found = 0;
    for (auto bits = static_cast<std::uint32_t>(masks[scenario]); bits != 0; bits &= bits - 1) {
      auto& last = smallest[static_cast<std::size_t>(std::countr_zero(bits))];
      found = std::max(found, std::exchange(last, place + 1));
    }
    if (found != 0) parents[scenario] = places[found - 1];
  }
  return parents;
}

ScenarioOrder OrderScenarios(std::span<const ScenarioIndex> parents) { return Passes(parents).Run(); }

}  // namespace tavio
