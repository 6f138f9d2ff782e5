#pragma once

#include <algorithm>

#include "foundation/values/Text.h"

namespace tavio {

// What is wrong with the code of an action; each has its own message to the user.
enum class ActionCodeFault { kNone, kEmpty, kNoLetterFirst, kBlankInside, kOtherSign };

// The Latin letters only. Letters that become Latin ones in upper case (the dotless i, the long s) are none.
constexpr bool IsCodeLetter(Char sign) noexcept {
  return (sign >= Char{'A'} && sign <= Char{'Z'}) || (sign >= Char{'a'} && sign <= Char{'z'});
}

constexpr bool IsCodeSign(Char sign) noexcept { return IsCodeLetter(sign) || (sign >= Char{'0'} && sign <= Char{'9'}); }

// The first fault of `code`. Blanks at its end are no fault; they stay part of the code where it is stored.
constexpr ActionCodeFault CheckActionCode(TextView code) noexcept {
  if (code.empty()) return ActionCodeFault::kEmpty;
  if (!IsCodeLetter(code.front())) return ActionCodeFault::kNoLetterFirst;
  const TextView trimmed = TrimBlanks(code);
  if (trimmed.find(Char{' '}) != TextView::npos) return ActionCodeFault::kBlankInside;
  if (!std::all_of(trimmed.begin(), trimmed.end(), IsCodeSign)) return ActionCodeFault::kOtherSign;
  return ActionCodeFault::kNone;
}

}  // namespace tavio
