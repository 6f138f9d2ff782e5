#include "companion/BoxesShell.h"

#include <iterator>

#include "foundation/packages/Component.h"

namespace tavio::companion {
namespace {

void AddTo(const Vector& list, const Box& box) {
  const auto record = Dictionary::New();
  record.Set(L"FTitle"_key, Value(TextView(box.title)));
  record.Set(L"FText"_key, Value(TextView(box.text)));
  record.Set(L"FStyle"_key, Value(static_cast<std::int32_t>(box.style)));
  record.Set(L"FAnswer"_key, Value(static_cast<std::int32_t>(box.answer)));
  record.Set(L"FKind"_key, Value(box.isDialog ? L"dialog" : L"box"));
  list.Add(record);
}

}  // namespace

STDMETHODIMP BoxesShell::AnswerWith(BSTR part, LONG button) {
  return Do([&] {
    rules_.push_back({TextOf(part), static_cast<int>(button)});
    if (collector_) collector_->rules = rules_;
  });
}

STDMETHODIMP BoxesShell::put_DialogSends(VARIANT_BOOL value) {
  return Do([&] {
    dialogSends_ = value != VARIANT_FALSE;
    if (collector_) collector_->dialogSends = dialogSends_;
  });
}

STDMETHODIMP BoxesShell::get_DialogSends(VARIANT_BOOL* result) {
  return Give(result, [&] { return dialogSends_; });
}

STDMETHODIMP BoxesShell::Start() {
  return Do([&] {
    if (collector_) return;
    const auto library = Component::Create(L"TavioClassBillAction.Message");
    collector_.emplace(library.Object().Get());
    collector_->rules = rules_;
    collector_->dialogSends = dialogSends_;
  });
}

STDMETHODIMP BoxesShell::Stop() {
  return Do([&] {
    if (!collector_) return;
    std::move(collector_->boxes.begin(), collector_->boxes.end(), std::back_inserter(shown_));
    collector_.reset();
  });
}

STDMETHODIMP BoxesShell::get_Shown(IDispatch** result) {
  return Give(result, [&] {
    const auto list = Vector::New();
    for (const auto& box : shown_) AddTo(list, box);
    if (collector_) {
      for (const auto& box : collector_->boxes) AddTo(list, box);
    }
    return list.Object();
  });
}

STDMETHODIMP BoxesShell::Forget() {
  return Do([&] {
    shown_.clear();
    if (collector_) collector_->boxes.clear();
  });
}

}  // namespace tavio::companion
