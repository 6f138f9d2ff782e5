#include "development/environment/FormTextLoader.h"

#include "foundation/packages/Vector.h"
#include "foundation/values/Error.h"
#include "foundation/values/InvokeByName.h"
#include "foundation/values/Text.h"

namespace tavio::development {
namespace {

void AssignCaption(const Component& form, const Text& control, const Value& text) {
  if (control.empty()) return form.Assign(L"Caption", text);
  if (!HasMember(form.Object().Get(), control.c_str())) return;
  Component(form.Read(control.c_str()).ToObject()).Assign(L"Caption", text);
}

}  // namespace

FormTextLoader::FormTextLoader() {
  Add(L"LoadFrmResStrings", [this](Arguments& a) { return LoadFrmResStrings(a); });
}

Rows FormTextLoader::TextsFor(const Component& form, const Text& language, const Text& file) {
  Text sql = L"SELECT FControl, FText FROM t_FormText WHERE FFile = ? AND FLanguage = ?";
  if (!HasMember(form.Object().Get(), L"Name")) return Store().Query(sql + L" ORDER BY FControl", file, language);
  const Text name = form.Read(L"Name").ToText();
  return Store().Query(sql + L" AND FForm = ? ORDER BY FControl", file, language, name);
}

Value FormTextLoader::LoadFrmResStrings(Arguments& arguments) {
  const Component form(arguments.At(0).ToObject());
  if (!form.Object()) throw Error::NotSet();
  const Rows rows = TextsFor(form, ToUpper(arguments.At(1).ToText()), arguments.At(3).ToText());
  const bool wantsTexts = arguments.Count() > 4;
  Dictionary texts = wantsTexts ? Dictionary(arguments.At(4)) : Dictionary();
  if (!texts) texts = Dictionary::New();
  const Vector list = Vector::New();
  for (const auto& row : rows.cells) {
    AssignCaption(form, row[0].ToText(), row[1]);
    texts.Set(Key(row[0].ToText()), row[1]);
    list.Add(row[1]);
  }
  if (wantsTexts) arguments.Return(4, texts.AsValue());
  return list.AsValue();
}

}  // namespace tavio::development
