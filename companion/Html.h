#pragma once

#include "foundation/values/Text.h"

namespace tavio::companion {

// Writes one HTML page. Whatever is given as text is escaped.
class Html {
 public:
  // Begins a page of that title with the companion's look, which follows the reader's light or dark setting.
  static Html Page(const Text& title);

  Html& Raw(TextView markup) {
    page_ += markup;
    return *this;
  }
  Html& Plain(TextView text);
  // <tag class="...">text</tag>
  Html& Element(TextView tag, TextView text, TextView style = {});
  Html& Open(TextView tag, TextView style = {});
  Html& Close(TextView tag);
  Text End();

 private:
  Text page_;
};

}  // namespace tavio::companion
