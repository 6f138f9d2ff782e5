#pragma once

#include <utility>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio {

// The second reader of the shared-properties string: "name=value;" pairs whose value may stand in braces, so that it
// can hold ";" and "=" itself ("ConnectString={Provider=x;Server=y};UserID=1;"). Each function consumes what it reads.

// The text before the first delimiter; `text` becomes what follows it, or empty if there is none.
constexpr TextView SplitHead(TextView& text, Char delimiter) noexcept {
  const auto found = text.find(delimiter);
  const TextView head = text.substr(0, found);
  text = found == TextView::npos ? TextView() : text.substr(found + 1);
  return head;
}

constexpr TextView NextPropName(TextView& text) noexcept { return TrimBlanks(SplitHead(text, Char{'='})); }

constexpr TextView NextPropValue(TextView& text) noexcept {
  text = TrimBlanks(text);
  if (text.empty() || text.front() != Char{'{'}) return TrimBlanks(SplitHead(text, Char{';'}));
  text.remove_prefix(1);
  const TextView value = SplitHead(text, Char{'}'});
  SplitHead(text, Char{';'});
  return TrimBlanks(value);
}

using PropPair = std::pair<TextView, TextView>;

// All pairs up to the first empty name. They refer to `props`.
inline std::vector<PropPair> ParsePairs(TextView props) {
  std::vector<PropPair> pairs;
  for (;;) {
    const TextView name = NextPropName(props);
    const TextView value = NextPropValue(props);
    if (name.empty()) return pairs;
    pairs.emplace_back(name, value);
  }
}

}  // namespace tavio
