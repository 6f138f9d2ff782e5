#include <map>

#include "companion/preview/ChannelParts.h"
#include "companion/recorder/PlatformCalls.h"
#include "foundation/packages/Fields.h"

namespace tavio::companion {
namespace {

constexpr wchar_t kMailGateway[] = L"MorlaMobileOpen.MorlaSendMail";
constexpr wchar_t kSmtp[] = L"Jmail.Message";

using UserKey = std::pair<Text, std::int32_t>;  // type and ID

UserKey KeyOf(const Listed& listed) { return {ToUpper(listed.type), listed.id}; }

// What the platform was asked about the recipients of a mail or short message, and what it answered.
struct Answers {
  std::set<UserKey> asked;
  std::vector<std::pair<UserKey, const Snapshot*>> records;  // in the order in which they are joined
  std::map<UserKey, const Snapshot*> first;                  // each user's first record
};

Answers AnswersOf(const Sending& sending) {
  Answers answers;
  for (const auto* call : FindCalls(sending, kRecipients, L"GetUserInfo")) {
    if (call->arguments.size() < 3) continue;
    const Text type = ToUpper(call->arguments[1].ToText());
    for (const auto& entry : call->arguments[2].entries) answers.asked.insert({type, IdIn(entry.value)});
    if (FAILED(call->result)) continue;
    for (const auto& entry : call->answer.entries) {
      const UserKey user{type, IdIn(entry.value)};
      answers.records.push_back({user, &entry.value});
      answers.first.try_emplace(user, &entry.value);
    }
  }
  return answers;
}

struct Addressed {
  const wchar_t* list;
  TextView field;
  wchar_t separator;
};

struct Joined {
  Text addresses;
  std::map<UserKey, std::vector<Text>> dropped;
};

Joined Join(const Answers& answers, const Addressed& how) {
  Joining joining(how.separator);
  Joined joined;
  for (const auto& [user, record] : answers.records) {
    auto within = joining.Add(TextIn(*record, how.field));
    if (!within.empty()) joined.dropped[user] = std::move(within);
  }
  joined.addresses = joining.Joined();
  return joined;
}

Person AddressedPerson(const Listed& entry, const Answers& answers, const Joined& joined, const Addressed& how,
                       const Users& users) {
  auto person = PersonOf(entry, users);
  const auto key = KeyOf(entry);
  const auto record = answers.first.find(key);
  if (!answers.asked.contains(key)) {
    person.reason = Reason::kExcluded;
  } else if (record == answers.first.end()) {
    TellOfUser(person, users);
    person.reason = WhyUnanswered(person);
  } else {
    if (person.name.empty()) person.name = TextIn(*record->second, L"FName");
    person.address = TextIn(*record->second, how.field);
    const auto dropped = joined.dropped.find(key);
    if (dropped != joined.dropped.end()) person.within = dropped->second;
    person.reason = person.address.empty()  ? Reason::kNoAddress
                    : person.within.empty() ? Reason::kGetsIt
                                            : Reason::kDropped;
  }
  return person;
}

// The people of a mail or short message; answers what the request must hold.
Text AddPeople(Channel& channel, const Sending& sending, const ChannelInput& input, const Addressed& how) {
  const auto list = PackageAt(input.message, Key(TextView(how.list)));
  const auto listed = ListedIn(list, true);
  const auto answers = AnswersOf(sending);
  const auto joined = Join(answers, how);
  input.users.Ask(IdsOf(listed));
  if (!channel.sent && channel.problem.empty()) channel.problem = ListProblem(list, listed);
  for (const auto& entry : listed) {
    channel.people.push_back(AddressedPerson(entry, answers, joined, how, input.users));
  }
  return joined.addresses;
}

// Over SMTP there is no package: what was assigned and added makes the request.
Json SmtpRequest(const Sending& sending, const Secrets& secrets) {
  Json request;
  for (const auto* call : sending.calls) {
    if (TextView(call->progId) != kSmtp || call->arguments.empty()) continue;
    const auto member = Utf8(call->member);
    auto value = ToJson(call->arguments[0], secrets);
    if (call->kind == Call::Kind::kAssign || !EqualsName(call->member, L"AddRecipient")) {
      request[member] = std::move(value);
    } else {
      request[member].push_back(std::move(value));
    }
  }
  return request;
}

Text SmtpRecipients(const Sending& sending) {
  Text joined;
  for (const auto* call : FindCalls(sending, kSmtp, L"AddRecipient")) {
    joined += (joined.empty() ? L"" : L";") + (call->arguments.empty() ? Text() : call->arguments[0].ToText());
  }
  return joined;
}

}  // namespace

Channel MailOf(const Sending& sending, const ChannelInput& input) {
  auto channel = Start(ChannelKind::kMail, sending);
  Text requested;
  if (const auto* call = FindCall(sending, kMailGateway, L"MorlaSendMail"); call && !call->arguments.empty()) {
    SetRequest(channel, kMailGateway, ToJson(call->arguments[0], input.secrets));
    requested = TextIn(call->arguments[0], L"Addrecipients");
  } else if (FindCall(sending, kSmtp, L"Send")) {
    SetRequest(channel, kSmtp, SmtpRequest(sending, input.secrets));
    requested = SmtpRecipients(sending);
  }
  if (!channel.sent) channel.problem = JoinedBoxes(channel.boxes);
  if (!channel.sent && channel.problem.empty()) channel.problem = FailureOf(sending, input, {kRecipients});
  const Addressed how{L"EmailUsers", L"Email", L';'};
  const Text expected = AddPeople(channel, sending, input, how);
  if (!channel.sent && channel.problem.empty() && !expected.empty()) channel.problem = CannotCreate(kMailGateway);
  Settle(channel, requested == expected);
  return channel;
}

Channel ShortMessageOf(const Sending& sending, const ChannelInput& input) {
  auto channel = Start(ChannelKind::kShortMessage, sending);
  Text requested;
  if (const auto* request = SmsRequest(sending)) {
    SetRequest(channel, kSmsGateway, ToJson(*request, input.secrets));
    requested = TextIn(*request, L"Recipients");
  }
  if (!channel.sent) channel.problem = FailureOf(sending, input, {kRecipients, kSmsGateway});
  const Text expected = AddPeople(channel, sending, input, {L"SMSUsers", L"Mobile", L','});
  Settle(channel, requested == expected);
  return channel;
}

}  // namespace tavio::companion
