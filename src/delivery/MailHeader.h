#pragma once

#include <algorithm>

#include "foundation/values/Text.h"

namespace tavio {

// Line ends and NUL end a mail header: whoever gets one into a header writes the headers that follow.
constexpr bool EndsHeader(Char unit) noexcept { return unit == Char{'\r'} || unit == Char{'\n'} || unit == Char{0}; }

// Whether `text` can stand in a header as it is.
constexpr bool FitsHeader(TextView text) noexcept { return std::none_of(text.begin(), text.end(), EndsHeader); }

// `text` with a blank in place of each character that would end the header.
inline Text FoldedForHeader(TextView text) {
  Text folded(text);
  std::replace_if(folded.begin(), folded.end(), EndsHeader, Char{' '});
  return folded;
}

// `text` with every carriage return and line feed pair as a line break of HTML.
inline Text WithHtmlLineBreaks(TextView text) {
  constexpr Char kLineEnd[] = {Char{'\r'}, Char{'\n'}, Char{0}};
  constexpr Char kBreak[] = {Char{'<'}, Char{'b'}, Char{'r'}, Char{'>'}, Char{0}};
  Text html;
  for (auto end = text.find(kLineEnd); end != TextView::npos; end = text.find(kLineEnd)) {
    html += text.substr(0, end);
    html += kBreak;
    text.remove_prefix(end + 2);
  }
  return html += text;
}

}  // namespace tavio
