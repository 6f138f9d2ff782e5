#include "development/environment/Loader.h"

#include "foundation/values/Text.h"

namespace tavio::development {

Loader::Loader() {
  AddKept(L"ResFileBaseName", file_);
  AddKept(L"LanguageID", language_);
  Add(L"LoadString", [this](Arguments& a) { return Value(TextView(LoadString(a.At(0).ToText()))); });
}

Text Loader::LoadString(const Text& source) {
  const Text language = ToUpper(language_);
  if (language.empty() || language == L"CHS") return source;
  try {
    const Value text = Store().FirstCell(
        L"SELECT FText FROM t_ResText WHERE FFile = ? AND FLanguage = ? AND FSource = ?", file_, language, source);
    return text.IsEmpty() ? source : text.ToText();
  } catch (...) {
    return source;
  }
}

}  // namespace tavio::development
