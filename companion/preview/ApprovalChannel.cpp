#include <algorithm>
#include <map>
#include <set>

#include "companion/preview/ChannelParts.h"
#include "foundation/packages/Fields.h"
#include "foundation/values/Error.h"

namespace tavio::companion {
namespace {

constexpr wchar_t kClassInfo[] = L"TavioMClass.ClassInfo";

bool FlagIn(const Snapshot& record, TextView field) {
  const auto* flag = record.Find(field);
  try {
    return flag && flag->value.OrEmpty().ToBool();
  } catch (const Error&) {
    return false;
  }
}

struct Telling {
  std::set<std::int32_t> candidates;
  std::map<std::int32_t, bool> told;
  bool failed = false;  // before the platform had answered
};

// The component is created only if there are candidates; a key that is no ID fails before.
bool FailedToAsk(const Sending& sending, const Call* asked, const std::vector<Listed>& listed) {
  if (asked) return FAILED(asked->result);
  const bool isBad = std::any_of(listed.begin(), listed.end(), [](const Listed& entry) { return !entry.isNumber; });
  return isBad || !IsRegistered(kRecipients) || FindCall(sending, kRecipients, L"");
}

Telling TellingOf(const Sending& sending, const std::vector<Listed>& listed) {
  Telling telling;
  const auto* call = FindCall(sending, kRecipients, L"GetIsUserNeedSend");
  telling.failed = FailedToAsk(sending, call, listed);
  if (telling.failed || !call || call->arguments.size() < 2) return telling;
  for (const auto& entry : call->arguments[1].entries) telling.candidates.insert(IdIn(entry.value));
  for (const auto& entry : call->answer.entries) telling.told[IdIn(entry.value)] = FlagIn(entry.value, L"FIsNeedSend");
  return telling;
}

Reason NoticeReason(Person& person, const Telling& telling, const Users& users, std::map<Text, std::int32_t>& numbers) {
  if (telling.failed) return Reason::kFailed;
  if (!telling.candidates.contains(person.id)) return Reason::kExcluded;
  const auto told = telling.told.find(person.id);
  person.wasAnswered = told != telling.told.end();
  if (!person.wasAnswered || !told->second) return Reason::kNotTold;
  if (!users.AreKnown()) return Reason::kUnread;
  TellOfUser(person, users);
  const auto* user = users.Find(person.id);
  if (!user || user->forbidden) return WhyUnanswered(person);
  person.address = user->number;
  if (person.address.empty()) return Reason::kNoAddress;
  const auto [first, fresh] = numbers.try_emplace(person.address, person.id);
  if (!fresh) person.within.push_back(std::to_wstring(first->second));
  return fresh ? Reason::kGetsIt : Reason::kDropped;
}

// Numbers of a list without regard to their order, which is the database's.
std::multiset<Text> NumbersIn(const Text& joined) {
  std::multiset<Text> numbers;
  for (const auto number : SplitAddresses(joined, L',')) numbers.emplace(number);
  return numbers;
}

}  // namespace

Channel ApprovalOf(const Sending& sending, const ChannelInput& input) {
  auto channel = Start(ChannelKind::kApproval, sending, input);
  const auto* request = SmsRequest(sending);
  if (request) SetRequest(channel, kSmsGateway, ToJson(*request, input.secrets));
  const auto list = PackageAt(input.message, L"MessageUsers"_key);
  const auto listed = ListedIn(list, false);
  if (!channel.sent) channel.problem = FailureOf(sending, input, {kRecipients, kClassInfo, kSmsGateway});
  if (!channel.sent && channel.problem.empty()) channel.problem = ListProblem(list, listed);
  input.users.Ask(IdsOf(listed));
  const auto telling = TellingOf(sending, listed);
  std::map<Text, std::int32_t> numbers;
  for (const auto& entry : listed) {
    auto person = PersonOf(entry, input.users);
    person.reason = NoticeReason(person, telling, input.users, numbers);
    channel.people.push_back(std::move(person));
  }
  std::multiset<Text> expected;
  for (const auto& [number, user] : numbers) expected.insert(number);
  const bool areKnown = input.users.AreKnown();
  const bool explained = !request || !areKnown || NumbersIn(TextIn(*request, L"Recipients")) == expected;
  if (!areKnown && channel.problem.empty()) channel.problem = Say(words::kUsersUnread);
  Settle(channel, explained, !expected.empty());
  return channel;
}

}  // namespace tavio::companion
