#pragma once

#include "foundation/values/Text.h"

namespace tavio {

// The value of the pair named `name` in a string of "name=value;" pairs; empty when there is none. Both must have been
// upper-cased, so that letter case does not matter and the value comes back as it is handed out: in upper case.
// The name is searched as a plain substring, so a longer name that ends with it can match first ("UILanguage=x;" for
// "LANGUAGE"): hosts rely on the first occurrence.
inline Text FindPropValue(TextView upperProps, TextView upperName) {
  const Text pattern = Text(upperName) + Char{'='};
  const auto found = upperProps.find(pattern);
  if (found == TextView::npos) return {};
  auto pair = upperProps.substr(found);
  pair = pair.substr(0, pair.find(Char{';'}));
  // A name that holds a ";" itself has its pair cut within the name.
  return pair.size() < pattern.size() ? Text() : Text(pair.substr(pattern.size()));
}

}  // namespace tavio
