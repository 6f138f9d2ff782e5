#include "companion/CheckerShell.h"

#include "companion/exchange/Exchange.h"

namespace tavio::companion {

const Findings& CheckerShell::Last() const {
  if (!last_) throw Refused(Say(words::kNothingChecked));
  return *last_;
}

STDMETHODIMP CheckerShell::Known(BSTR name) {
  return Do([&] { known_.insert(TextOf(name)); });
}

STDMETHODIMP CheckerShell::Against(BSTR older) {
  return Do([&] {
    auto text = Utf8(TextOf(older));
    ReadExport(text, 0);
    older_ = std::move(text);
  });
}

STDMETHODIMP CheckerShell::OfType(LONG classTypeId, IDispatch** result) {
  return Give(result, [&] {
    const auto type = static_cast<std::int32_t>(classTypeId);
    auto subject = SubjectOf(type);
    subject.known = known_;
    Users users;
    auto findings = Check(subject, users);
    if (!older_.empty()) {
      for (auto& finding : CheckAgainst(SubjectOf(ReadExport(older_, type)), subject)) {
        findings.push_back(std::move(finding));
      }
    }
    last_ = std::move(findings);
    return ObjectOf(ToPackage(ToJson(*last_)));
  });
}

STDMETHODIMP CheckerShell::get_Text(BSTR* result) {
  return Give(result, [&] { return ToReadableText(Last()); });
}

STDMETHODIMP CheckerShell::get_Json(BSTR* result) {
  return Give(result, [&] { return ToText(ToJson(Last())); });
}

}  // namespace tavio::companion
