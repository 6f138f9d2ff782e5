#include <algorithm>
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
  std::set<Text> types;                                      // for which it answered
  std::vector<std::pair<UserKey, const Snapshot*>> records;  // in the order in which they are joined
  std::map<UserKey, const Snapshot*> first;                  // each user's first record
  bool failed = false;                                       // before all were asked
  bool areNamed = true;                                      // whether it is known whose they are
};

bool NamesUsers(const Snapshot& records) {
  return std::any_of(records.entries.begin(), records.entries.end(),
                     [](const Snapshot::Entry& entry) { return entry.value.Find(L"FUserID"); });
}

// The library has no use for the ID in a record: without it only the order tells whose it is.
void AddRecords(Answers& answers, const Text& type, const Snapshot& asked, const Snapshot& records) {
  const bool areNamed = NamesUsers(records);
  const bool inOrder = !areNamed && records.entries.size() == asked.entries.size();
  if (!areNamed && !inOrder && !records.entries.empty()) answers.areNamed = false;
  for (std::size_t i = 0; i < records.entries.size(); ++i) {
    const auto& record = records.entries[i].value;
    const UserKey user{type, IdIn(inOrder ? asked.entries[i].value : record)};
    answers.records.push_back({user, &record});
    answers.first.try_emplace(user, &record);
  }
}

Answers AnswersOf(const Sending& sending) {
  Answers answers;
  for (const auto* call : FindCalls(sending, kRecipients, L"GetUserInfo")) {
    if (call->arguments.size() < 3) continue;
    const Text type = ToUpper(call->arguments[1].ToText());
    for (const auto& entry : call->arguments[2].entries) answers.asked.insert({type, IdIn(entry.value)});
    if (FAILED(call->result)) continue;
    answers.types.insert(type);
    AddRecords(answers, type, call->arguments[2], call->answer);
  }
  return answers;
}

// Whether the operation ended before it had asked about everybody. It creates the component only if anybody is left to
// be asked about.
bool FailedToAsk(const Sending& sending, const std::vector<Listed>& listed) {
  const bool isBad = std::any_of(listed.begin(), listed.end(), [](const Listed& entry) { return !entry.isNumber; });
  const auto* created = FindCall(sending, kRecipients, L"");
  const auto asked = FindCalls(sending, kRecipients, L"GetUserInfo");
  const auto failed = [](const Call* call) { return FAILED(call->result); };
  if (!created && asked.empty()) return !sending.answered && (isBad || !IsRegistered(kRecipients));
  return asked.empty() || std::any_of(asked.begin(), asked.end(), failed);
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
  std::set<UserKey> taken;
  for (const auto& [user, record] : answers.records) {
    const auto address = TextIn(*record, how.field);
    auto within = joining.Add(address);
    if (within.empty() && !address.empty()) taken.insert(user);
    if (!within.empty()) joined.dropped[user] = std::move(within);
  }
  for (const auto& user : taken) joined.dropped.erase(user);
  joined.addresses = joining.Joined();
  return joined;
}

Person AddressedPerson(const Listed& entry, const Answers& answers, const Joined& joined, const Addressed& how,
                       const Users& users) {
  auto person = PersonOf(entry, users);
  const auto key = KeyOf(entry);
  const auto record = answers.first.find(key);
  if (answers.failed && !answers.types.contains(key.first)) {
    person.reason = Reason::kFailed;
  } else if (!answers.asked.contains(key)) {
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
  auto answers = AnswersOf(sending);
  answers.failed = FailedToAsk(sending, listed);
  const auto joined = Join(answers, how);
  input.users.Ask(IdsOf(listed));
  if (!channel.sent && channel.problem.empty()) channel.problem = ListProblem(list, listed);
  if (!answers.areNamed && channel.problem.empty()) channel.problem = Say(words::kNameless);
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
  auto channel = Start(ChannelKind::kMail, sending, input);
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
  if (!channel.sent && channel.problem.empty() && !expected.empty()) {
    channel.problem = FailureOf(sending, input, {kMailGateway});
  }
  Settle(channel, requested == expected, !expected.empty());
  return channel;
}

Channel ShortMessageOf(const Sending& sending, const ChannelInput& input) {
  auto channel = Start(ChannelKind::kShortMessage, sending, input);
  Text requested;
  if (const auto* request = SmsRequest(sending)) {
    SetRequest(channel, kSmsGateway, ToJson(*request, input.secrets));
    requested = TextIn(*request, L"Recipients");
  }
  if (!channel.sent) channel.problem = FailureOf(sending, input, {kRecipients, kSmsGateway});
  const Text expected = AddPeople(channel, sending, input, {L"SMSUsers", L"Mobile", L','});
  Settle(channel, requested == expected, !expected.empty());
  return channel;
}

}  // namespace tavio::companion
