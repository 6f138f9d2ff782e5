#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio {

// A text that grows at its end and is searched all the while. Growing costs the same for each character, whatever the
// text is; a search costs as much as the part that is sought is long (its square at worst), however long the text is.
//
// The index is a position heap: a tree with one node per end position, the root being the empty start. A node stands
// for the characters before its position, read backwards: the fewest that no earlier node stands for. Above it stands
// the node for one character less. So whoever reads a part backwards from the root meets every position where it can
// end, and they are few.
//
// Nobody reads backwards, though. From each node a link per character leads to the node that stands for that character
// and then for what the first one stands for (if there is one). Along these links and upwards, a text is followed from
// its beginning, always at the lowest node that stands for what was read last.
class SearchedText {
 public:
  bool Contains(TextView part) const noexcept {
    Position end = kRoot;
    for (const Char unit : part) {
      Position next = kRoot;
      while ((next = Linked(end, unit)) == kRoot) {
        if (end == kRoot) return false;  // no such character anywhere
        end = nodes_[end].above;
      }
      end = next;
    }
    while (end != kRoot && !EndsAt(end, part)) end = nodes_[end].above;
    return end != kRoot || part.empty();
  }

  // Less than 2^32 characters in all. Throws std::bad_alloc.
  void Append(TextView more) {
    for (const Char unit : more) Append(unit);
  }

 private:
  // How many characters of the text stand before it; also the number of its node.
  using Position = std::uint32_t;
  static constexpr Position kRoot = 0;

  struct Node {
    Position above = kRoot;
    Position firstLinked = kRoot;  // most nodes have one link or none; those after the first are in the table
  };
  struct Link {
    Position from = kRoot;
    Position to = kRoot;  // the root in a free slot: no link leads there
  };

  bool EndsAt(Position end, TextView part) const noexcept {
    return end >= part.size() && TextView(text_).substr(end - part.size(), part.size()) == part;
  }

  // The character that a node, or the link to it, stands for first.
  Char UnitOf(Position node) const noexcept { return text_[node - 1]; }

  // The new node is linked from the lowest node, above the last position's, that has no such link yet.
  void Append(Char unit) {
    text_ += unit;
    const auto last = static_cast<Position>(nodes_.size() - 1);
    Position from = last, above = kRoot;
    while (from != kRoot && (above = Linked(nodes_[from].above, unit)) == kRoot) from = nodes_[from].above;
    nodes_.push_back({above});
    AddLink({from, last + 1});
  }

  Position Linked(Position from, Char unit) const noexcept {
    const auto first = nodes_[from].firstLinked;
    if (first == kRoot || UnitOf(first) == unit) return first;
    if (links_.empty()) return kRoot;
    auto slot = SlotOf(from, unit);
    while (links_[slot].to != kRoot && (links_[slot].from != from || UnitOf(links_[slot].to) != unit))
      slot = Next(slot);
    return links_[slot].to;
  }

  void AddLink(Link link) {
    auto& first = nodes_[link.from].firstLinked;
    if (first == kRoot) {
      first = link.to;
      return;
    }
    if (++linkCount_ * 4 > links_.size() * 3) Grow();
    Put(link);
  }

  void Put(Link link) noexcept {
    auto slot = SlotOf(link.from, UnitOf(link.to));
    while (links_[slot].to != kRoot) slot = Next(slot);
    links_[slot] = link;
  }

  void Grow() {
    constexpr std::size_t kFewest = 64;
    std::vector<Link> fewer(links_.empty() ? kFewest : links_.size() * 2);
    fewer.swap(links_);
    for (const auto& link : fewer) {
      if (link.to != kRoot) Put(link);
    }
  }

  std::size_t SlotOf(Position from, Char unit) const noexcept {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;  // odd, without a pattern in its bits
    const auto spread = (std::uint64_t{from} << 16 | unit) * kSpread;
    return static_cast<std::size_t>(spread >> 32) & (links_.size() - 1);
  }
  std::size_t Next(std::size_t slot) const noexcept { return (slot + 1) & (links_.size() - 1); }

  Text text_;
  std::vector<Node> nodes_ = std::vector<Node>(1);
  std::vector<Link> links_;  // a quarter free at least; their number is a power of two
  std::size_t linkCount_ = 0;
};

}  // namespace tavio
