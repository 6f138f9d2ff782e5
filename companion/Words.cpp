#include "companion/Words.h"

#include "foundation/environment/SharedProperties.h"

namespace tavio::companion {

bool SpeaksEnglish() {
  static const bool english = GetPropValue(L"Language").starts_with(L"EN");
  return english;
}

Text Say(const Word& word) { return SpeaksEnglish() ? word.english : word.chinese; }

}  // namespace tavio::companion
