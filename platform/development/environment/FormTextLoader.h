#pragma once

#include "development/storage/PlatformObject.h"
#include "foundation/packages/Component.h"

namespace tavio::development {

// TavioFormText.FormTextLoader: the captions of forms, in t_FormText.
//   LoadFrmResStrings(form, language, "", file[, texts]) -> Vector
// Assigns Caption of the form and of the controls that it offers by name (form.tabMain.Caption), and answers the texts
// in the table's order; a control that the form does not have is passed over. Texts of the form named by form.Name are
// taken, or of every form of the file if the form has no such property. `texts`, a Dictionary by reference (made
// if it is not set), gets each text under its control's name, the form's own under "". Without texts in the language
// nothing is assigned: the form keeps the Chinese texts it was made with.
class FormTextLoader final : public PlatformObject {
 public:
  FormTextLoader();

 private:
  Value LoadFrmResStrings(Arguments& arguments);
  Rows TextsFor(const Component& form, const Text& language, const Text& file);
};

}  // namespace tavio::development
