#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "companion/recorder/Breaker.h"
#include "companion/recorder/Snapshot.h"

namespace tavio::companion {

class RecordingFactory;

// One call of a component, or its creation.
struct Call {
  enum class Kind { kCreate, kCall, kAssign };

  Kind kind = Kind::kCall;
  const wchar_t* progId = nullptr;
  Text member;             // empty if it is created
  std::int32_t entry = 0;  // the number of the log entry that it belongs to; 0 if there is none
  bool passed = true;      // whether the component itself answered
  bool broken = false;     // whether it failed because it was told to
  std::vector<Snapshot> arguments;
  Snapshot answer;
  Snapshot writtenBack;  // a list of the arguments afterwards, if a text or number among them was changed
  HRESULT result = S_OK;
  Text description;  // of a failure
  double begin = 0;  // milliseconds since the recording began
  double end = 0;
};

// An operation of the library, as it writes it to the log.
struct LogEntry {
  std::int32_t number = 0;
  std::int32_t parent = 0;
  std::int32_t handle = 0;
  Text label;
  std::optional<std::int32_t> outcome;
  double begin = 0;
  double end = 0;
  bool open = true;
};

// What one call by name comes with.
struct Invocation {
  const wchar_t* progId;
  TextView member;
  DISPID id;
  LCID locale;
  WORD flags;
  DISPPARAMS* parameters;
  VARIANT* result;
  EXCEPINFO* info;
  UINT* wrongArgument;

  bool Assigns() const noexcept { return (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0; }
  HRESULT PassTo(IDispatch* real) const {
    return real->Invoke(id, IID_NULL, locale, flags, parameters, result, info, wrongArgument);
  }
};

// Stands in front of the platform's components in this thread from Start to Stop, by class objects of its own under
// their identifiers, and records what is asked of them. Objects made meanwhile may live on: from Stop on they pass
// everything to the real ones.
class Recording : public std::enable_shared_from_this<Recording> {
 public:
  enum class Mode {
    kTrace,   // everything is passed on
    kDryRun,  // only what reads is
  };

  // At most `room` entries of the packages of one argument are kept.
  Recording(Mode mode, std::int32_t room);
  ~Recording();
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  // The one that runs in this thread; null if none does.
  static std::shared_ptr<Recording> Running() noexcept;

  // Raises Error if another one runs.
  void Start();
  void Stop() noexcept;
  bool IsRunning() const noexcept;

  // `detail`: what is raised (a text), answered (of a wrong type) or waited for (milliseconds); empty for the usual.
  void Break(Breaker::Breakage breakage, Value detail);

  // Whether the component is made through this recording: it is asked for once, and let go of again. True too if
  // nobody could make it.
  bool StandsBefore(const wchar_t* progId) const;
  // Those that are not registered, which nobody can stand before, and those for which the system takes no class object
  // of ours.
  const std::vector<Text>& Unseen() const noexcept { return unseen_; }

  const std::deque<Call>& Calls() const noexcept { return calls_; }
  const std::vector<LogEntry>& Entries() const noexcept { return entries_; }
  // Whether the library logs here: it does not if it looked for its log before the recording began.
  bool HasEntries() const noexcept { return !entries_.empty(); }

 private:
  friend class RecordingFactory;
  friend class RecordingObject;

  HRESULT Create(RecordingFactory& factory, REFIID iid, void** object);
  HRESULT Invoke(IDispatch* real, const Invocation& call);
  bool KeepsBack() const noexcept { return mode_ == Mode::kDryRun; }
  void LoseSight(const wchar_t* progId) { unseen_.emplace_back(progId); }
  // Whether the member's next call is to find it missing, which counts as that call.
  bool Hides(const wchar_t* progId, TextView member);

  Call& Begin(Call::Kind kind, const wchar_t* progId, TextView member);
  HRESULT Answer(IDispatch* real, const Invocation& call, bool& passed);
  HRESULT AnswerForLog(IDispatch* real, const Invocation& call, bool& passed);
  HRESULT AnswerIsEnabled(IDispatch* real, const Invocation& call);
  HRESULT AnswerLogStart(IDispatch* real, const Invocation& call, bool& passed);
  HRESULT AnswerLogEnd(IDispatch* real, const Invocation& call, bool& passed);
  std::int32_t OpenEntry(std::int32_t handle, TextView label);
  void CloseEntry(std::int32_t handle, std::int32_t outcome);
  std::int32_t OpenNow() const noexcept { return open_.empty() ? 0 : open_.back(); }
  HRESULT BreakCreation(std::size_t breakage);
  // Empty if the call goes on.
  std::optional<HRESULT> BreakCall(std::size_t breakage, const Invocation& call);
  double Now() const noexcept;

  Mode mode_;
  std::int32_t room_;
  Breaker breaker_;
  std::vector<Value> details_;
  std::vector<ComPtr<RecordingFactory>> factories_;
  std::vector<Text> unseen_;
  std::deque<Call> calls_;
  std::vector<LogEntry> entries_;
  std::vector<std::int32_t> open_;  // numbers of entries, the innermost last
  std::int32_t ownHandles_ = 0;
  bool realLogIsOn_ = false;
  LARGE_INTEGER start_ = {};
};

}  // namespace tavio::companion
