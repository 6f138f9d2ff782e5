#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioResLoader.Loader: localised texts, in t_ResText.
//   ResFileBaseName, LanguageID   which texts: both are assigned before the first lookup
//   LoadString(source)            the source's text in the language; the source itself in Chinese (CHS), if there is
//                                 no translation, and if the database cannot be read, since the texts of failures
//                                 pass through here too
class Loader final : public PlatformObject {
 public:
  Loader();

 private:
  Text LoadString(const Text& source);

  Text file_;
  Text language_;
};

}  // namespace tavio::development
