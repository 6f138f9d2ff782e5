#pragma once

#include <cstddef>

#include "foundation/values/Text.h"

namespace tavio::companion {

// Whether what stands behind an INTO ends the word. What stands before it says nothing: "1INTO t" is two words.
inline bool HasInto(TextView upper) {
  const Char into[] = {'I', 'N', 'T', 'O', 0};
  for (auto at = upper.find(into); at != TextView::npos; at = upper.find(into, at + 1)) {
    const Char next = at + 4 < upper.size() ? upper[at + 4] : Char{' '};
    const bool letter = (next >= Char{'A'} && next <= Char{'Z'}) || (next >= Char{'0'} && next <= Char{'9'});
    if (!letter && next != Char{'_'} && next < Char{0x80}) return true;
  }
  return false;
}

// Whether an SQL text is one SELECT that only reads: no second statement behind a ";", and no SELECT INTO. Texts in
// quotes do not count. Comments are refused, and quotes in square brackets, because databases differ on where they end.
inline bool IsSelectOnly(TextView sql) {
  Text plain;
  Char quote = 0;
  bool inBrackets = false;
  for (const Char unit : sql) {
    if (quote != 0) {
      if (unit == quote) quote = 0;
      continue;
    }
    if (unit == Char{'\''} || unit == Char{'"'}) quote = unit;
    if (quote != 0 && inBrackets) return false;
    inBrackets = unit == Char{'['} || (inBrackets && unit != Char{']'});
    const bool space = unit == Char{'\t'} || unit == Char{'\r'} || unit == Char{'\n'};
    plain += space ? Char{' '} : unit >= Char{'a'} && unit <= Char{'z'} ? static_cast<Char>(unit - 32) : unit;
  }
  const Char select[] = {'S', 'E', 'L', 'E', 'C', 'T', ' ', 0};
  const Char dashes[] = {'-', '-', 0}, star[] = {'/', '*', 0};
  TextView rest = TrimBlanks(plain);
  if (rest.empty() || quote != 0) return false;
  if (rest.back() == Char{';'}) rest.remove_suffix(1);
  if (rest.substr(0, 7) != select || rest.find(Char{';'}) != TextView::npos) return false;
  return !HasInto(rest) && rest.find(dashes) == TextView::npos && rest.find(star) == TextView::npos;
}

}  // namespace tavio::companion
