#include "catalogues/ScenarioOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <queue>
#include <utility>

namespace tavio {
namespace {

class Passes {
 public:
  explicit Passes(std::span<const ScenarioIndex> parents)
      : parents_(parents),
        head_(static_cast<ScenarioIndex>(parents.size())),
        last_(head_),
        nodes_(parents.size() + 1),
        levels_(parents.size(), kNoLevel) {
    nodes_[head_].behind = head_;
    for (ScenarioIndex scenario = 0; scenario <= head_; ++scenario) Link(scenario);
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
  // A scenario's place in three chains. The ring of the unplaced and the sequence share one head behind the last node.
  struct Node {
    ScenarioIndex next;  // in the ring of the unplaced
    ScenarioIndex previous;
    ScenarioIndex behind;  // in the sequence
    ScenarioIndex child = kNoScenario;
    ScenarioIndex sibling = kNoScenario;
  };

  void Link(ScenarioIndex scenario) {
    nodes_[scenario].next = scenario == head_ ? 0 : scenario + 1;
    nodes_[scenario].previous = scenario == 0 ? head_ : scenario - 1;
    if (scenario == head_) return;
    const auto parent = parents_[scenario];
    if (parent == kNoScenario) return Visit(0, scenario);
    nodes_[scenario].sibling = std::exchange(nodes_[parent].child, scenario);
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
    Insert(parent == kNoScenario ? last_ : parent, scenario);
    movedUp_ = nodes_[scenario].next;
    Unlink(scenario);
    for (auto child = nodes_[scenario].child; child != kNoScenario; child = nodes_[child].sibling) {
      Visit(child > scenario ? pass_ : pass_ + 1, child);
    }
  }

  void Insert(ScenarioIndex place, ScenarioIndex scenario) {
    nodes_[scenario].behind = std::exchange(nodes_[place].behind, scenario);
    if (last_ == place) last_ = scenario;
  }

  void Unlink(ScenarioIndex scenario) {
    const auto [next, previous] = std::pair(nodes_[scenario].next, nodes_[scenario].previous);
    nodes_[previous].next = next;
    nodes_[next].previous = previous;
  }

  std::vector<ScenarioIndex> Sequence() const {
    std::vector<ScenarioIndex> sequence;
    sequence.reserve(parents_.size());
    for (const auto chain : {&Node::behind, &Node::next}) {
      for (auto at = nodes_[head_].*chain; at != head_; at = nodes_[at].*chain) sequence.push_back(at);
    }
    return sequence;
  }

  std::span<const ScenarioIndex> parents_;
  ScenarioIndex head_;
  ScenarioIndex last_;  // in the sequence
  std::vector<Node> nodes_;
  std::vector<std::int32_t> levels_;
  // By pass, then by position: the set's order is the order of the unplaced in every pass.
  std::priority_queue<std::uint64_t, std::vector<std::uint64_t>, std::greater<>> visits_;
  std::uint32_t pass_ = 0;
  ScenarioIndex movedUp_ = kNoScenario;
};

struct Place {
  std::uint32_t rank;  // greater for a smaller mask
  ScenarioIndex scenario;
};

// One step of a radix sort: `from` into `to` by eight bits of the rank, keeping the order of equals.
void SortByDigit(const std::vector<Place>& from, std::vector<Place>& to, unsigned shift) {
  std::array<std::size_t, 257> starts{};
  const auto digit = [&](const Place& place) { return (place.rank >> shift) & 0xFFu; };
  for (const auto& place : from) ++starts[digit(place) + 1];
  for (std::size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
  for (const auto& place : from) to[starts[digit(place)]++] = place;
}

// Linear, where a comparing sort of random masks would cost more than everything else here.
std::vector<Place> ByDescendingMask(std::span<const std::int32_t> masks) {
  constexpr std::uint32_t kAllButSign = 0x7FFFFFFF;
  std::vector<Place> places;
  places.reserve(masks.size());
  for (const auto mask : masks) {
    places.push_back({static_cast<std::uint32_t>(mask) ^ kAllButSign, static_cast<ScenarioIndex>(places.size())});
  }
  std::vector<Place> spare(places.size());
  for (unsigned shift = 0; shift < 32; shift += 8) {
    SortByDigit(places, spare, shift);
    places.swap(spare);
  }
  return places;
}

}  // namespace

std::vector<ScenarioIndex> ScenarioParents(std::span<const std::int32_t> masks) {
  std::vector<ScenarioIndex> parents(masks.size(), kNoScenario);
  const auto places = ByDescendingMask(masks);
  // By bit: the place, counted from 1, of the smallest mask so far that has it; 0 for none.
  std::array<std::size_t, 32> smallest{};
  for (std::size_t place = 0; place < places.size(); ++place) {
    const auto scenario = places[place].scenario;
    std::size_t found = 0;
    for (auto bits = static_cast<std::uint32_t>(masks[scenario]); bits != 0; bits &= bits - 1) {
      auto& last = smallest[static_cast<std::size_t>(std::countr_zero(bits))];
      found = std::max(found, std::exchange(last, place + 1));
    }
    if (found != 0) parents[scenario] = places[found - 1].scenario;
  }
  return parents;
}

ScenarioOrder OrderScenarios(std::span<const ScenarioIndex> parents) { return Passes(parents).Run(); }

}  // namespace tavio
