#include "companion/recorder/Recording.h"

#include <algorithm>

#include "companion/recorder/PlatformCalls.h"
#include "companion/recorder/RecordingObject.h"
#include "foundation/values/Error.h"

namespace tavio::companion {
namespace {

// Of the thread, since class objects and the objects they make stay in theirs.
thread_local Recording* running = nullptr;

// The one operation that ends its log entry by beginning it once more.
constexpr wchar_t kBeginsTwice[] = L"TavioClassBillAction.BillActions.GetMessage";
constexpr std::int32_t kUsualDelay = 1000;

Snapshot Everything(const DISPPARAMS& parameters, std::int32_t room) {
  Snapshot list;
  list.kind = Snapshot::Kind::kList;
  for (UINT i = parameters.cArgs; i > 0; --i) {
    list.entries.push_back({Text(), Snapshot::Of(parameters.rgvarg[i - 1], room)});
  }
  list.count = static_cast<std::int32_t>(list.entries.size());
  return list;
}

// Whether a by-reference text or number is another one than before.
bool WasChanged(const DISPPARAMS& parameters, const std::vector<Snapshot>& before) {
  for (UINT i = 0; i < parameters.cArgs; ++i) {
    const VARIANT& argument = parameters.rgvarg[parameters.cArgs - 1 - i];
    const bool scalar = before[i].kind == Snapshot::Kind::kValue && !(argument.vt & VT_ARRAY);
    if (!scalar || !(argument.vt & VT_BYREF)) continue;
    const auto now = Snapshot::Of(argument, 0);
    if (now.kind != Snapshot::Kind::kValue || now.ToText() != before[i].ToText()) return true;
  }
  return false;
}

Text DescriptionOf(HRESULT result, const EXCEPINFO* info) {
  if (SUCCEEDED(result)) return {};
  if (result == DISP_E_EXCEPTION && info && info->bstrDescription) return Text(ViewOf(info->bstrDescription));
  return Error::FromHresult(result).Description();
}

Text TextOr(const Value& detail, const wchar_t* usual) { return detail.IsEmpty() ? Text(usual) : detail.ToText(); }

void Wait(const Value& detail) { Sleep(static_cast<DWORD>(detail.IsEmpty() ? kUsualDelay : detail.ToInt32())); }

}  // namespace

Recording::Recording(Mode mode, std::int32_t room) : mode_(mode), room_(room) {}

Recording::~Recording() { Stop(); }

std::shared_ptr<Recording> Recording::Running() noexcept {
  return running ? running->weak_from_this().lock() : nullptr;
}

bool Recording::IsRunning() const noexcept { return running == this; }

double Recording::Now() const noexcept {
  LARGE_INTEGER now, frequency;
  QueryPerformanceCounter(&now);
  QueryPerformanceFrequency(&frequency);
  return static_cast<double>(now.QuadPart - start_.QuadPart) * 1000 / static_cast<double>(frequency.QuadPart);
}

void Recording::Start() {
  if (running) throw Error(E_ACCESSDENIED, L"TavioCompanion.Recorder", L"A recorder is running already; stop it first");
  QueryPerformanceCounter(&start_);
  unseen_.clear();
  running = this;
  for (const auto* progId : PlatformComponents()) {
    CLSID id;
    if (FAILED(CLSIDFromProgID(progId, &id))) {
      unseen_.emplace_back(progId);
      continue;
    }
    ComPtr<RecordingFactory> factory;
    *factory.GetAddressOf() = new RecordingFactory(progId, id, weak_from_this());
    if (SUCCEEDED(factory->Register())) {
      factories_.push_back(std::move(factory));
    } else {
      unseen_.emplace_back(progId);
    }
  }
}

void Recording::Stop() noexcept {
  if (!IsRunning()) return;
  running = nullptr;
  for (const auto& factory : factories_) factory->Revoke();
  factories_.clear();
}

void Recording::Break(Breaker::Breakage breakage, Value detail) {
  breaker_.Add(std::move(breakage));
  details_.push_back(std::move(detail));
}

bool Recording::StandsBefore(const wchar_t* progId) const {
  CLSID id;
  ComPtr<IUnknown> object;
  if (FAILED(CLSIDFromProgID(progId, &id))) return true;
  const auto callsBefore = calls_.size();
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_PPV_ARGS(&object)))) return calls_.size() > callsBefore;
  ComPtr<IUnknown> recorded;
  return SUCCEEDED(object->QueryInterface(IID_IRecorded, reinterpret_cast<void**>(recorded.GetAddressOf())));
}

Call& Recording::Begin(Call::Kind kind, const wchar_t* progId, TextView member) {
  auto& call = calls_.emplace_back();
  call.kind = kind;
  call.progId = progId;
  call.member = member;
  call.entry = OpenNow();
  call.begin = Now();
  return call;
}

HRESULT Recording::BreakCreation(std::size_t breakage) {
  if (breaker_.At(breakage).fault != Fault::kLate) return REGDB_E_CLASSNOTREG;
  Wait(details_[breakage]);
  return S_OK;
}

HRESULT Recording::Create(RecordingFactory& factory, REFIID iid, void** object) {
  const auto self = shared_from_this();
  auto& call = Begin(Call::Kind::kCreate, factory.ProgId(), {});  // a deque keeps it in its place
  ComPtr<IDispatch> real;
  const auto breakage = breaker_.Count(factory.ProgId(), {});
  call.broken = breakage.has_value();
  call.result = breakage ? BreakCreation(*breakage) : S_OK;
  if (SUCCEEDED(call.result)) call.result = factory.MakeReal(real);
  if (SUCCEEDED(call.result)) {
    auto* made = new RecordingObject(factory.ProgId(), std::move(real));
    call.result = made->QueryInterface(iid, object);
    made->Release();
  }
  call.description = DescriptionOf(call.result, nullptr);
  call.end = Now();
  return call.result;
}

bool Recording::Hides(const wchar_t* progId, TextView member) {
  const auto next = breaker_.Next(progId, member);
  if (!next || breaker_.At(*next).fault != Fault::kMissing) return false;
  breaker_.Count(progId, member);
  auto& call = Begin(Call::Kind::kCall, progId, member);
  call.broken = true;
  call.passed = false;
  call.result = DISP_E_UNKNOWNNAME;
  call.description = DescriptionOf(call.result, nullptr);
  call.end = Now();
  return true;
}

HRESULT Recording::Invoke(IDispatch* real, const Invocation& invocation) {
  const auto self = shared_from_this();
  const auto kind = invocation.Assigns() ? Call::Kind::kAssign : Call::Kind::kCall;
  auto arguments = Everything(*invocation.parameters, room_);
  auto& call = Begin(kind, invocation.progId, invocation.member);
  for (auto& argument : arguments.entries) call.arguments.push_back(std::move(argument.value));
  const auto breakage = breaker_.Count(invocation.progId, invocation.member);
  call.broken = breakage.has_value();
  call.passed = false;
  const auto broken = breakage ? BreakCall(*breakage, invocation) : std::nullopt;
  call.result = broken ? *broken : Answer(real, invocation, call.passed);
  call.end = Now();
  if (invocation.result) call.answer = Snapshot::Of(*invocation.result, room_);
  if (WasChanged(*invocation.parameters, call.arguments)) call.writtenBack = Everything(*invocation.parameters, room_);
  call.description = DescriptionOf(call.result, invocation.info);
  return call.result;
}

std::optional<HRESULT> Recording::BreakCall(std::size_t breakage, const Invocation& call) {
  const Value& detail = details_[breakage];
  switch (breaker_.At(breakage).fault) {
    case Fault::kLate:
      Wait(detail);
      return std::nullopt;
    case Fault::kNothing:
      return S_OK;
    case Fault::kWrongType:
      if (call.result) *call.result = (detail.IsEmpty() ? Value(L"?") : detail.Copy()).Detach();
      return S_OK;
    case Fault::kRaises:
      if (!call.info) return E_FAIL;
      *call.info = {};
      call.info->scode = E_FAIL;
      call.info->bstrSource = BString(call.progId).Detach();
      call.info->bstrDescription = BString(TextOr(detail, L"broken by the recorder")).Detach();
      return DISP_E_EXCEPTION;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT Recording::Answer(IDispatch* real, const Invocation& call, bool& passed) {
  if (call.progId == kLog) return AnswerForLog(real, call, passed);
  const com::Arguments arguments(*call.parameters);
  passed = mode_ == Mode::kTrace || OnlyReads(call.progId, call.member, call.Assigns(), arguments);
  if (passed) return call.PassTo(real);
  auto answer = AnswerInstead(call.progId, call.member, arguments);
  if (call.result) *call.result = answer.Detach();
  return S_OK;
}

HRESULT Recording::AnswerForLog(IDispatch* real, const Invocation& call, bool& passed) {
  if (EqualsName(call.member, L"IsEnabled")) return AnswerIsEnabled(real, call);
  if (EqualsName(call.member, L"LogStart")) return AnswerLogStart(real, call, passed);
  if (EqualsName(call.member, L"LogEnd")) return AnswerLogEnd(real, call, passed);
  passed = mode_ == Mode::kTrace;
  return passed ? call.PassTo(real) : S_OK;
}

// The log says that it is on, so that every operation tells its beginning and its end.
HRESULT Recording::AnswerIsEnabled(IDispatch* real, const Invocation& call) {
  if (mode_ == Mode::kTrace) {
    Value answer;
    auto asked = call;
    asked.result = answer.Receive();
    asked.wrongArgument = nullptr;
    realLogIsOn_ = SUCCEEDED(asked.PassTo(real)) && answer.Type() == VT_BOOL && answer.ToBool();
  }
  if (call.result) *call.result = Value(true).Detach();
  return S_OK;
}

HRESULT Recording::AnswerLogStart(IDispatch* real, const Invocation& call, bool& passed) {
  const Text label = com::Arguments(*call.parameters).OrEmpty(0).ToText();
  passed = realLogIsOn_ && call.result;
  if (passed) {
    const HRESULT result = call.PassTo(real);
    if (SUCCEEDED(result)) OpenEntry(Value::CopyOf(*call.result).ToInt32(), label);
    return result;
  }
  if (call.result) *call.result = Value(OpenEntry(--ownHandles_, label)).Detach();
  return S_OK;
}

HRESULT Recording::AnswerLogEnd(IDispatch* real, const Invocation& call, bool& passed) {
  const com::Arguments arguments(*call.parameters);
  const auto handle = arguments.OrEmpty(0).ToInt32();
  CloseEntry(handle, arguments.OrEmpty(1).ToInt32());
  passed = handle >= 0 && mode_ == Mode::kTrace;
  return passed ? call.PassTo(real) : S_OK;
}

std::int32_t Recording::OpenEntry(std::int32_t handle, TextView label) {
  if (const auto innermost = OpenNow(); innermost != 0 && label == kBeginsTwice) {
    auto& entry = entries_[static_cast<std::size_t>(innermost - 1)];
    if (entry.label == label) {
      CloseEntry(entry.handle, 1);
      entry.outcome.reset();
      return handle;
    }
  }
  auto& entry = entries_.emplace_back();
  entry.number = static_cast<std::int32_t>(entries_.size());
  entry.parent = OpenNow();
  entry.handle = handle;
  entry.label = label;
  entry.begin = Now();
  open_.push_back(entry.number);
  return handle;
}

// Entries within that were never ended are ended with it.
void Recording::CloseEntry(std::int32_t handle, std::int32_t outcome) {
  const auto is = [&](std::int32_t number) { return entries_[static_cast<std::size_t>(number - 1)].handle == handle; };
  const auto found = std::find_if(open_.rbegin(), open_.rend(), is);
  if (found == open_.rend()) return;
  auto& entry = entries_[static_cast<std::size_t>(*found - 1)];
  entry.outcome = outcome;
  entry.end = Now();
  entry.open = false;
  open_.erase(std::next(found).base(), open_.end());
}

}  // namespace tavio::companion
