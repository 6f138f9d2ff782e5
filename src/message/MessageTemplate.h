#pragma once

#include "foundation/values/Text.h"

namespace tavio {

// Rewrites a text in which names stand in square brackets: `appendTranslated(name, result)` appends what stands for
// "[name]". A name reaches from a "[" to the first "]" after it, as it stands: untrimmed, and other "[" belong to it. A
// "[" that is never closed ends the rewriting; the rest of the text stays as it is.
template <class AppendTranslated>
Text RewriteBrackets(TextView text, AppendTranslated&& appendTranslated) {
  Text result;
  result.reserve(text.size());  // values are about as long as the names that they stand for
  std::size_t plain = 0;        // start of the text not yet appended
  for (;;) {
    const auto open = text.find(Char{'['}, plain);
    const auto close = open == TextView::npos ? open : text.find(Char{']'}, open);
    if (close == TextView::npos) break;
    result += text.substr(plain, open - plain);
    appendTranslated(text.substr(open + 1, close - open - 1), result);
    plain = close + 1;
  }
  return result += text.substr(plain);
}

inline void AppendBracketed(TextView name, Text& result) {
  result += Char{'['};
  result += name;
  result += Char{']'};
}

}  // namespace tavio
