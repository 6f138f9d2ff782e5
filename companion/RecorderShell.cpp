#include "companion/RecorderShell.h"

#include <algorithm>
#include <iterator>

#include "companion/recorder/CallTree.h"
#include "companion/recorder/PlatformCalls.h"

namespace tavio::companion {
namespace {

constexpr std::int32_t kEntriesKept = 100;

struct FaultName {
  const wchar_t* name;
  Fault fault;
};
constexpr FaultName kFaults[] = {
    {L"not created", Fault::kNotCreated}, {L"missing", Fault::kMissing},      {L"raises", Fault::kRaises},
    {L"nothing", Fault::kNothing},        {L"wrong type", Fault::kWrongType}, {L"late", Fault::kLate},
};

Fault FaultOf(const Text& name) {
  const auto* found =
      std::find_if(std::begin(kFaults), std::end(kFaults), [&](const FaultName& row) { return row.name == name; });
  if (found != std::end(kFaults)) return found->fault;
  Text known;
  for (const auto& row : kFaults) known += (known.empty() ? L"" : L", ") + Text(row.name);
  throw Refused(L"Unknown fault '" + name + L"'; there are: " + known);
}

void RefuseUnlessKnown(const Text& progId) {
  Text known;
  for (const auto* component : PlatformComponents()) {
    if (EqualsName(progId, component)) return;
    known += (known.empty() ? L"" : L", ") + Text(component);
  }
  throw Refused(L"Unknown component '" + progId + L"'; there are: " + known);
}

}  // namespace

RecorderShell::~RecorderShell() {
  if (recording_) recording_->Stop();
}

void RecorderShell::Start(Recording::Mode mode) {
  auto fresh = std::make_shared<Recording>(mode, kEntriesKept);
  for (const auto& broken : broken_) fresh->Break(broken.breakage, broken.detail.Copy());
  fresh->Start();
  recording_ = std::move(fresh);
}

const Recording& RecorderShell::Recorded() const {
  if (!recording_) throw Refused(L"Nothing was recorded: call Trace or DryRun first");
  return *recording_;
}

STDMETHODIMP RecorderShell::Trace() {
  return Do([&] { Start(Recording::Mode::kTrace); });
}

STDMETHODIMP RecorderShell::DryRun() {
  return Do([&] { Start(Recording::Mode::kDryRun); });
}

STDMETHODIMP RecorderShell::Break(BSTR progId, BSTR member, LONG call, BSTR fault, VARIANT detail) {
  return Do([&] {
    Broken broken{{TextOf(progId), TextOf(member), static_cast<std::int32_t>(call), FaultOf(TextOf(fault))},
                  Value::CopyOf(detail)};
    RefuseUnlessKnown(TextOf(progId));
    if (broken.breakage.fault == Fault::kNotCreated) broken.breakage.member.clear();
    if (recording_ && recording_->IsRunning()) recording_->Break(broken.breakage, broken.detail.Copy());
    broken_.push_back(std::move(broken));
  });
}

STDMETHODIMP RecorderShell::Stop() {
  return Do([&] {
    if (recording_) recording_->Stop();
  });
}

STDMETHODIMP RecorderShell::get_Running(VARIANT_BOOL* result) {
  return Give(result, [&] { return recording_ && recording_->IsRunning(); });
}

STDMETHODIMP RecorderShell::get_Calls(IDispatch** result) {
  return Give(result, [&] { return ObjectOf(ToPackage(CallsOf(Recorded()))); });
}

STDMETHODIMP RecorderShell::get_Entries(IDispatch** result) {
  return Give(result, [&] { return ObjectOf(ToPackage(EntriesOf(Recorded()))); });
}

STDMETHODIMP RecorderShell::get_HasEntries(VARIANT_BOOL* result) {
  return Give(result, [&] { return Recorded().HasEntries(); });
}

STDMETHODIMP RecorderShell::get_Unseen(IDispatch** result) {
  return Give(result, [&] {
    const auto list = Vector::New();
    for (const auto& progId : Recorded().Unseen()) list.Add(Value(TextView(progId)));
    return list.Object();
  });
}

STDMETHODIMP RecorderShell::get_Text(BSTR* result) {
  return Give(result, [&] { return TreeOf(Recorded()); });
}

STDMETHODIMP RecorderShell::get_Html(BSTR* result) {
  return Give(result, [&] { return ToPage(Recorded()); });
}

STDMETHODIMP RecorderShell::get_Json(BSTR* result) {
  return Give(result, [&] { return ToText(Json{{"Entries", EntriesOf(Recorded())}, {"Calls", CallsOf(Recorded())}}); });
}

}  // namespace tavio::companion
