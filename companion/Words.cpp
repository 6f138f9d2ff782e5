#include "companion/Words.h"

#include "foundation/environment/ResText.h"
#include "foundation/environment/SharedProperties.h"

namespace tavio::companion {

bool SpeaksEnglish() {
  static const bool english = GetPropValue(L"Language").starts_with(L"EN");
  return english;
}

Text Say(const Word& word) { return SpeaksEnglish() ? word.english : word.chinese; }

Text WordsOf(const Error& error) {
  const Text localised = LoadResText(error.SystemText());
  return localised.empty() ? error.Description() : error.Description(localised);
}

}  // namespace tavio::companion
