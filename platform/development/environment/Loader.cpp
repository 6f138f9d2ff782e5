#include "development/environment/Loader.h"

#include "foundation/values/Text.h"

namespace tavio::development {

Loader::Loader() {
  const auto property = [this](const wchar_t* name, Text& held) {
    Add(
        name, [&held](Arguments&) { return Value(TextView(held)); },
        [&held](Arguments& a) {
          held = a.At(0).ToText();
          return Value();
        });
  };
  property(L"ResFileBaseName", file_);
  property(L"LanguageID", language_);
  Add(L"LoadString", [this](Arguments& a) { return Value(TextView(LoadString(a.At(0).ToText()))); });
}

Text Loader::LoadString(const Text& source) {
  const Text language = ToUpper(language_);
  if (language.empty() || language == L"CHS") return source;
  try {
    const Rows rows = Store().Query(L"SELECT FText FROM t_ResText WHERE FFile = ? AND FLanguage = ? AND FSource = ?",
                                    file_, language, source);
    return rows.IsEmpty() ? source : rows.cells[0][0].ToText();
  } catch (...) {
    return source;
  }
}

}  // namespace tavio::development
