#pragma once

#include <cstddef>

#include "foundation/values/Text.h"

namespace tavio::companion {

// Whether an SQL text is one SELECT that only reads: no second statement behind a ";", and no SELECT INTO. Texts in
// quotes do not count, nor do comments, which are refused, because databases differ on where they end.
inline bool IsSelectOnly(TextView sql) {
  Text plain;
  Char quote = 0;
  for (const Char unit : sql) {
    if (quote != 0) {
      if (unit == quote) quote = 0;
      continue;
    }
    if (unit == Char{'\''} || unit == Char{'"'}) quote = unit;
    const bool space = unit == Char{'\t'} || unit == Char{'\r'} || unit == Char{'\n'};
    plain += space ? Char{' '} : unit >= Char{'a'} && unit <= Char{'z'} ? static_cast<Char>(unit - 32) : unit;
  }
  const Char select[] = {'S', 'E', 'L', 'E', 'C', 'T', ' ', 0}, into[] = {' ', 'I', 'N', 'T', 'O', ' ', 0};
  const Char dashes[] = {'-', '-', 0}, star[] = {'/', '*', 0};
  TextView rest = TrimBlanks(plain);
  if (rest.empty() || quote != 0) return false;
  if (rest.back() == Char{';'}) rest.remove_suffix(1);
  if (rest.substr(0, 7) != select || rest.find(Char{';'}) != TextView::npos) return false;
  return rest.find(into) == TextView::npos && rest.find(dashes) == TextView::npos && rest.find(star) == TextView::npos;
}

}  // namespace tavio::companion
