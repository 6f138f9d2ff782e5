#include "foundation/environment/ResText.h"

#include "foundation/environment/PendingError.h"
#include "foundation/environment/ProcessState.h"
#include "foundation/environment/SharedProperties.h"

namespace tavio {
namespace {

constexpr wchar_t kResourceFile[] = L"TavioDesign";

// A loader that refuses a setting is asked for its texts all the same.
void AssignIfDifferent(const Component& loader, const wchar_t* property, const Text& wanted) noexcept try {
  if (loader.Read(property).ToText() != wanted) loader.Assign(property, Value(TextView(wanted)));
} catch (...) {
}

Text Translation(Text core) noexcept try {
  auto& process = Process();
  if (process.language.empty()) process.language = GetPropValue(L"Language");
  if (!process.resourceLoader) process.resourceLoader = Component::Create(L"TavioResLoader.Loader");
  const auto loader = *process.resourceLoader;  // held, since it may call the library back
  AssignIfDifferent(loader, L"ResFileBaseName", kResourceFile);
  AssignIfDifferent(loader, L"LanguageID", process.language);
  return loader.Call(L"LoadString", ByRef(core)).ToText();
} catch (...) {
  return Text();
}

}  // namespace

Text LoadResText(TextView source) noexcept try {
  const TextView core = TrimBlanks(source);
  if (core.empty()) return Text();
  const PendingError pending;
  const auto lead = static_cast<std::size_t>(core.data() - source.data());
  return Text(source.substr(0, lead)) + Translation(Text(core)) + Text(source.substr(lead + core.size()));
} catch (const std::bad_alloc&) {
  return Text();
}

Vector LoadFormResources(const Component& form, Dictionary& resources) {
  const auto loader = Component::Create(L"TavioFormText.FormTextLoader");
  auto formReference = Value(form.Object());
  const Text language = GetPropValue(L"Language");
  if (!resources) {
    return Vector(loader.Call(L"LoadFrmResStrings", ByRef(formReference), language, L"", kResourceFile));
  }
  return Vector(
      loader.Call(L"LoadFrmResStrings", ByRef(formReference), language, L"", kResourceFile, ByRef(resources)));
}

}  // namespace tavio
