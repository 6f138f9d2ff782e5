#pragma once

#include "foundation/packages/Dictionary.h"

namespace tavio {

// What each bracketed name of a text becomes.
struct TranslationFlags {
  bool caption = false;
  bool value = false;
  bool name = false;
};

// The text with each bracketed variable name replaced by the variable's caption or value, or each caption by the name.
// Flags that are not followed come back false. `variables` and `group`, which gives values by name, may be unset. An
// operation of its own, TransMessage: a failure is shown, and answers an empty text.
BString Translate(TextView text, TranslationFlags& flags, const Dictionary& variables,
                  const Dictionary& group) noexcept;
BString TranslateToValues(TextView text, const Dictionary& variables, const Dictionary& group) noexcept;

}  // namespace tavio
