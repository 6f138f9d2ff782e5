#include "companion/recorder/CallTree.h"

#include <cstdio>
#include <limits>

#include "companion/TextTable.h"
#include "companion/Words.h"
#include "companion/recorder/PlatformCalls.h"

namespace tavio::companion {
namespace {

constexpr std::size_t kLongestArgument = 60;

const char* NameOf(Call::Kind kind) noexcept {
  constexpr const char* kNames[] = {"create", "call", "assign"};
  return kNames[static_cast<int>(kind)];
}

Json ListOf(const std::vector<Snapshot>& snapshots, const Secrets& secrets) {
  Json list = Json::array();
  for (const auto& snapshot : snapshots) list.push_back(ToJson(snapshot, secrets));
  return list;
}

Json RecordOf(const Call& call, const Secrets& secrets) {
  Json record = {{"FComponent", Utf8(call.progId)}, {"FMember", Utf8(call.member)}, {"FKind", NameOf(call.kind)}};
  record["FEntry"] = call.entry;
  record["Arguments"] = ListOf(call.arguments, secrets);
  record["Answer"] = ToJson(call.answer, secrets);
  if (call.writtenBack.count) record["WrittenBack"] = ToJson(call.writtenBack, secrets);
  record["FResult"] = static_cast<std::int32_t>(call.result);
  record["FDescription"] = Utf8(secrets.Masked(call.description));
  record["FPassed"] = call.passed;
  record["FBroken"] = call.broken;
  record["FBegin"] = call.begin;
  record["FEnd"] = call.end;
  return record;
}

bool IsShown(const Call& call) noexcept { return call.progId != kLog; }

Text Milliseconds(double duration) {
  char text[32];
  std::snprintf(text, sizeof text, "%9.2f ms", duration);
  return FromUtf8(text);
}

Text Shortened(const Json& json) {
  Text text = FromUtf8(json.dump());
  if (text.size() <= kLongestArgument) return text;
  text.resize(kLongestArgument);
  return text += L'…';
}

// What a line says behind the name.
Text Details(const Call& call, const Secrets& secrets) {
  Text arguments;
  for (const auto& argument : call.arguments) {
    if (!arguments.empty()) arguments += L", ";
    arguments += Shortened(ToJson(argument, secrets));
  }
  Text text;
  if (call.kind == Call::Kind::kAssign) text = L" = " + arguments;
  if (call.kind == Call::Kind::kCall) text = L"(" + arguments + L") -> " + Shortened(ToJson(call.answer, secrets));
  if (!call.passed) text += call.broken ? L"  [broken]" : L"  [kept back]";
  if (FAILED(call.result)) text += L"  ! " + Plain(secrets.Masked(call.description), Lines::kJoined);
  return text;
}

Text Outcome(const LogEntry& entry) { return entry.outcome ? L" = " + std::to_wstring(*entry.outcome) : Text(); }

// Entries and calls of one parent lie mixed in time.
class Walker {
 public:
  explicit Walker(const Recording& recording) : recording_(recording) { Walk(0, 0); }
  std::vector<TreeLine> Lines() && { return std::move(lines_); }

 private:
  void Walk(std::int32_t parent, int depth) {
    auto call = recording_.Calls().begin();
    const auto callsUntil = [&](double time) {
      for (; call != recording_.Calls().end() && call->begin < time; ++call) {
        if (call->entry == parent && IsShown(*call)) lines_.push_back({depth, nullptr, &*call});
      }
    };
    for (const auto& entry : recording_.Entries()) {
      if (entry.parent != parent) continue;
      callsUntil(entry.begin);
      lines_.push_back({depth, &entry, nullptr});
      Walk(entry.number, depth + 1);
    }
    callsUntil(std::numeric_limits<double>::max());
  }

  const Recording& recording_;
  std::vector<TreeLine> lines_;
};

}  // namespace

Json CallsOf(const Recording& recording) {
  const Secrets secrets(recording.Calls());
  Json calls = Json::array();
  for (const auto& call : recording.Calls()) {
    if (IsShown(call)) calls.push_back(RecordOf(call, secrets));
  }
  return calls;
}

Json EntriesOf(const Recording& recording) {
  Json entries = Json::array();
  for (const auto& entry : recording.Entries()) {
    entries.push_back({{"FNumber", entry.number},
                       {"FParent", entry.parent},
                       {"FLabel", Utf8(entry.label)},
                       {"FOutcome", entry.outcome ? Json(*entry.outcome) : Json()},
                       {"FBegin", entry.begin},
                       {"FEnd", entry.end}});
  }
  return entries;
}

std::vector<TreeLine> LinesOf(const Recording& recording) { return Walker(recording).Lines(); }

double DurationOf(const TreeLine& line) noexcept {
  if (line.entry) return line.entry->open ? 0 : line.entry->end - line.entry->begin;
  return line.call->end - line.call->begin;
}

Text NameOf(const TreeLine& line) {
  if (line.entry) return line.entry->label;
  Text name = line.call->kind == Call::Kind::kCreate ? L"create " : L"";
  name += line.call->progId;
  if (!line.call->member.empty()) name += L"." + line.call->member;
  return name;
}

Text TreeOf(const Recording& recording) {
  const Secrets secrets(recording.Calls());
  const auto lines = LinesOf(recording);
  Text text = recording.HasEntries() || lines.empty() ? Text() : Say(words::kNoEntries) + L"\n";
  for (const auto& line : lines) {
    text +=
        Milliseconds(DurationOf(line)) + L"  " + Text(static_cast<std::size_t>(line.depth) * 2, L' ') + NameOf(line);
    text += line.call ? Details(*line.call, secrets) : Outcome(*line.entry);
    text += L'\n';
  }
  return text;
}

}  // namespace tavio::companion
