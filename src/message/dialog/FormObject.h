#pragma once

#include "com/server/LateBound.h"

namespace tavio {

using com::LateBound;

// A form or a control of one, as the platform's form-text loader sees it: Name and Caption, which it assigns, and on a
// form its controls by their names. Stays usable, without effect, after the form is gone.
class FormObject final : public LateBound {
 public:
  static ComPtr<FormObject> New(const wchar_t* name, Text caption);

  // Held by the form; the control must not hold the form in turn.
  void Add(const ComPtr<FormObject>& control);
  const Text& Caption() const noexcept { return caption_; }

 private:
  FormObject(const wchar_t* name, Text caption);

  Text name_;
  Text caption_;
};

}  // namespace tavio
