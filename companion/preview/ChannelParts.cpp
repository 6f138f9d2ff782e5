#include "companion/preview/ChannelParts.h"

#include <algorithm>

#include "companion/recorder/PlatformCalls.h"
#include "foundation/values/Error.h"

namespace tavio::companion {
namespace {

Text CannotCreate(const wchar_t* progId) { return Say(words::kCannotCreate) + L" " + progId; }

}  // namespace

std::vector<const Call*> FindCalls(const Sending& sending, const wchar_t* progId, const wchar_t* member) {
  std::vector<const Call*> found;
  for (const auto* call : sending.calls) {
    if (TextView(call->progId) == progId && EqualsName(call->member, member)) found.push_back(call);
  }
  return found;
}

const Call* FindCall(const Sending& sending, const wchar_t* progId, const wchar_t* member) {
  const auto found = FindCalls(sending, progId, member);
  return found.empty() ? nullptr : found.back();
}

std::int32_t IdIn(const Snapshot& record) {
  const auto* id = record.Find(L"FUserID");
  try {
    return id ? id->value.OrEmpty().ToInt32() : 0;
  } catch (const Error&) {
    return 0;
  }
}

Text TextIn(const Snapshot& record, TextView field) {
  const auto* held = record.Find(field);
  return held ? held->ToText() : Text();
}

bool IsRegistered(const wchar_t* progId) {
  CLSID id;
  return SUCCEEDED(CLSIDFromProgID(progId, &id));
}

Text FailureOf(const Sending& sending, const ChannelInput& input, std::initializer_list<const wchar_t*> needed) {
  for (const auto* progId : needed) {
    if (!IsRegistered(progId)) return CannotCreate(progId);
  }
  for (const auto* call : sending.calls) {
    const bool counts = std::any_of(needed.begin(), needed.end(),
                                    [&](const wchar_t* progId) { return TextView(call->progId) == progId; });
    if (!counts || SUCCEEDED(call->result)) continue;
    if (call->kind == Call::Kind::kCreate) return CannotCreate(call->progId);
    return Text(call->progId) + L"." + call->member + L": " + input.secrets.Masked(call->description);
  }
  return {};
}

Text ListProblem(const Dictionary& list, const std::vector<Listed>& listed) {
  if (!list) return Say(words::kNoList);
  if (listed.empty()) return Say(words::kNobody);
  const auto bad = std::find_if(listed.begin(), listed.end(), [](const Listed& entry) { return !entry.isNumber; });
  return bad == listed.end() ? Text() : Say(words::kBadKey) + L" " + bad->key;
}

Text JoinedBoxes(const std::vector<Text>& boxes) {
  Text joined;
  for (const auto& box : boxes) joined += (joined.empty() ? L"" : L" | ") + box;
  return joined;
}

Channel Start(ChannelKind kind, const Sending& sending, const ChannelInput& input) {
  Channel channel;
  channel.kind = kind;
  channel.sent = sending.answered;
  for (const auto& box : sending.boxes) channel.boxes.push_back(input.secrets.Masked(box));
  return channel;
}

void SetRequest(Channel& channel, const wchar_t* component, Json request) {
  channel.component = component;
  channel.request = std::move(request);
}

std::set<std::int32_t> IdsOf(const std::vector<Listed>& listed) {
  std::set<std::int32_t> ids;
  for (const auto& entry : listed) {
    if (entry.isNumber && ToUpper(entry.type) == L"U") ids.insert(entry.id);
  }
  return ids;
}

Person PersonOf(const Listed& listed, const Users& users) {
  Person person;
  person.type = ToUpper(listed.type);
  person.id = listed.id;
  const auto* user = person.type == L"U" ? users.Find(listed.id) : nullptr;
  if (user) person.name = user->name;
  if (!listed.isNumber) person.name = listed.key;
  return person;
}

void TellOfUser(Person& person, const Users& users) {
  if (person.type != L"U" || !users.AreKnown()) return;
  const auto* user = users.Find(person.id);
  person.isUnknown = !user;
  person.isForbidden = user && user->forbidden;
}

Reason WhyUnanswered(const Person& person) {
  return person.isForbidden ? Reason::kForbidden : person.isUnknown ? Reason::kUnknown : Reason::kUnanswered;
}

void Settle(Channel& channel, bool explained, bool isLeft) {
  const bool hasRequest = !channel.request.is_null();
  if (hasRequest && !explained) channel.problem = Say(words::kDiffers);
  if (!hasRequest && channel.problem.empty()) channel.problem = Say(isLeft ? words::kSilent : words::kNothingThere);
  if (channel.sent) return;
  for (auto& person : channel.people) {
    if (person.reason == Reason::kGetsIt) person.reason = Reason::kFailed;
  }
}

const Snapshot* SmsRequest(const Sending& sending) {
  const auto* call = FindCall(sending, kSmsGateway, L"SmsSendForBillCheck");
  if (!call || call->arguments.empty() || call->arguments[0].entries.empty()) return nullptr;
  return &call->arguments[0].entries[0].value;
}

}  // namespace tavio::companion
