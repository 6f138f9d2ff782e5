#include "companion/recorder/CallTree.h"

#include <cstdio>

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

Text Milliseconds(double begin, double end) {
  char text[32];
  std::snprintf(text, sizeof text, "%9.2f ms", end - begin);
  return FromUtf8(text);
}

Text Shortened(const Json& json) {
  Text text = FromUtf8(json.dump());
  if (text.size() <= kLongestArgument) return text;
  text.resize(kLongestArgument);
  return text += L'…';
}

Text LineOf(const Call& call, const Secrets& secrets) {
  Text line = call.kind == Call::Kind::kCreate ? L"create " : L"";
  line += call.progId;
  if (!call.member.empty()) line += L"." + call.member;
  Text arguments;
  for (const auto& argument : call.arguments) {
    if (!arguments.empty()) arguments += L", ";
    arguments += Shortened(ToJson(argument, secrets));
  }
  if (call.kind == Call::Kind::kAssign) line += L" = " + arguments;
  if (call.kind == Call::Kind::kCall) line += L"(" + arguments + L") -> " + Shortened(ToJson(call.answer, secrets));
  if (!call.passed) line += call.broken ? L"  [broken]" : L"  [kept back]";
  if (FAILED(call.result)) line += L"  ! " + secrets.Masked(call.description);
  return line;
}

class Tree {
 public:
  explicit Tree(const Recording& recording) : recording_(recording), secrets_(recording.Calls()) {}

  Text Lines() {
    if (!recording_.HasEntries()) text_ += L"(no entries: the library was used before the recorder was started)\n";
    Append(0, 0);
    return std::move(text_);
  }

 private:
  // Entries and calls of one parent lie mixed in time.
  void Append(std::int32_t parent, int depth) {
    auto call = recording_.Calls().begin();
    const auto appendCallsUntil = [&](double time) {
      for (; call != recording_.Calls().end() && call->begin < time; ++call) {
        if (call->entry == parent && IsShown(*call)) Line(depth, call->begin, call->end, LineOf(*call, secrets_));
      }
    };
    for (const auto& entry : recording_.Entries()) {
      if (entry.parent != parent) continue;
      appendCallsUntil(entry.begin);
      const Text outcome = entry.outcome ? L" = " + std::to_wstring(*entry.outcome) : Text();
      Line(depth, entry.begin, entry.open ? entry.begin : entry.end, entry.label + outcome);
      Append(entry.number, depth + 1);
    }
    appendCallsUntil(1e300);
  }

  void Line(int depth, double begin, double end, const Text& what) {
    text_ += Milliseconds(begin, end) + L"  " + Text(static_cast<std::size_t>(depth) * 2, L' ') + what + L"\n";
  }

  const Recording& recording_;
  Secrets secrets_;
  Text text_;
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

Text TreeOf(const Recording& recording) { return Tree(recording).Lines(); }

}  // namespace tavio::companion
