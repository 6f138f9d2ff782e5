#include "companion/preview/Channels.h"

#include <algorithm>

#include "companion/recorder/PlatformCalls.h"
#include "foundation/packages/Fields.h"

namespace tavio::companion {
namespace {

constexpr wchar_t kCommand[] = L"TavioAppCommand.Command";
constexpr wchar_t kRecipients[] = L"TavioMSmsManager.clsBillUseInfo";
constexpr wchar_t kClassInfo[] = L"TavioMClass.ClassInfo";
constexpr wchar_t kMailGateway[] = L"MorlaMobileOpen.MorlaSendMail";
constexpr wchar_t kSmsGateway[] = L"MorlaMobileOpen.MobileOpen";
constexpr wchar_t kSmtp[] = L"Jmail.Message";
constexpr std::size_t kMost = 32767;

using UserKey = std::pair<Text, std::int32_t>;  // type and ID

UserKey KeyOf(const Listed& listed) { return {ToUpper(listed.type), listed.id}; }

std::vector<const Call*> FindCalls(const Sending& sending, const wchar_t* progId, const wchar_t* member) {
  std::vector<const Call*> found;
  for (const auto* call : sending.calls) {
    if (TextView(call->progId) == progId && EqualsName(call->member, member)) found.push_back(call);
  }
  return found;
}

std::int32_t IdIn(const Snapshot& record) {
  const auto* id = record.Find(L"FUserID");
  return id ? id->value.OrEmpty().ToInt32() : 0;
}

Text TextIn(const Snapshot& record, TextView field) {
  const auto* held = record.Find(field);
  return held ? held->ToText() : Text();
}

bool IsUnseen(const ChannelInput& input, const wchar_t* progId) {
  return std::find(input.unseen.begin(), input.unseen.end(), progId) != input.unseen.end();
}

Text CannotCreate(const wchar_t* progId) { return Say(words::kCannotCreate) + L" " + progId; }

// The first failure of a component that the channel cannot do without; empty if there was none.
Text FailureOf(const Sending& sending, const ChannelInput& input, std::initializer_list<const wchar_t*> needed) {
  for (const auto* progId : needed) {
    if (IsUnseen(input, progId)) return CannotCreate(progId);
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

// What keeps a channel from every recipient, by its list alone.
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

Channel Start(ChannelKind kind, const Sending& sending) {
  Channel channel;
  channel.kind = kind;
  channel.sent = sending.answered;
  channel.boxes = sending.boxes;
  return channel;
}

void SetRequest(Channel& channel, const wchar_t* component, Json request) {
  channel.component = component;
  channel.request = std::move(request);
}

Json NamedArguments(const Call& call, std::initializer_list<const char*> names, const Secrets& secrets) {
  Json request;
  auto argument = call.arguments.begin();
  for (const auto* name : names) {
    if (argument != call.arguments.end()) request[name] = ToJson(*argument++, secrets);
  }
  return request;
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
  return person;
}

void TellOfUser(Person& person, const Users& users) {
  if (person.type != L"U" || !users.AreKnown()) return;
  const auto* user = users.Find(person.id);
  person.isUnknown = !user;
  person.isForbidden = user && user->forbidden;
}

// Why the platform answered nothing about him.
Reason WhyUnanswered(const Person& person) {
  return person.isForbidden ? Reason::kForbidden : person.isUnknown ? Reason::kUnknown : Reason::kUnanswered;
}

void AddFieldUsers(Channel& channel, const std::vector<std::int32_t>& sentTo, const std::set<std::int32_t>& listed,
                   const ChannelInput& input) {
  for (const auto id : sentTo) {
    if (listed.contains(id)) continue;
    auto person = PersonOf({std::to_wstring(id), L"U", id}, input.users);
    TellOfUser(person, input.users);
    for (const auto& field : input.fields) {
      if (field.user == id) person.fields.push_back(field.field);
    }
    person.fieldsAreSure = !person.fields.empty();
    if (person.fields.empty()) person.fields = input.fieldCaptions;
    channel.people.push_back(std::move(person));
  }
}

}  // namespace

const Call* FindCall(const Sending& sending, const wchar_t* progId, const wchar_t* member) {
  const auto found = FindCalls(sending, progId, member);
  return found.empty() ? nullptr : found.back();
}

Channel SystemMessageOf(const Sending& sending, const ChannelInput& input) {
  auto channel = Start(ChannelKind::kSystemMessage, sending);
  const auto list = PackageAt(input.message, L"MessageUsers"_key);
  const auto listed = ListedIn(list, false);
  const auto* call = FindCall(sending, kCommand, L"SendMessage");
  std::vector<std::int32_t> sentTo;
  if (call && call->arguments.size() == 9) {
    SetRequest(
        channel, kCommand,
        NamedArguments(
            *call, {"ConnectString", "Content", "Length", "Title", "Recipients", "Sender", "Flag1", "Flag2", "Command"},
            input.secrets));
    sentTo = call->arguments[4].value.ToIntegers();
  }
  const bool failed = !channel.sent && !channel.boxes.empty();
  if (failed) channel.problem = JoinedBoxes(channel.boxes);
  if (failed && listed.size() > kMost) channel.problem = Say(words::kTooMany) + L": " + channel.problem;
  if (!channel.sent && !failed) channel.problem = ListProblem(list, listed);

  auto ids = IdsOf(listed);
  auto asked = ids;
  asked.insert(sentTo.begin(), sentTo.end());
  input.users.Ask(asked);
  const std::set<std::int32_t> reached(sentTo.begin(), sentTo.end());
  for (const auto& entry : listed) {
    auto person = PersonOf(entry, input.users);
    TellOfUser(person, input.users);
    person.reason = failed ? Reason::kFailed : reached.contains(entry.id) ? Reason::kGetsIt : Reason::kExcluded;
    channel.people.push_back(std::move(person));
  }
  AddFieldUsers(channel, sentTo, ids, input);
  return channel;
}

namespace {

// What the platform was asked about the recipients of a mail or short message, and what it answered.
struct Answers {
  std::set<UserKey> asked;
  std::vector<std::pair<UserKey, const Snapshot*>> records;  // in the order in which they are joined
};

Answers AnswersOf(const Sending& sending) {
  Answers answers;
  for (const auto* call : FindCalls(sending, kRecipients, L"GetUserInfo")) {
    if (call->arguments.size() < 3) continue;
    const Text type = ToUpper(call->arguments[1].ToText());
    for (const auto& entry : call->arguments[2].entries) answers.asked.insert({type, IdIn(entry.value)});
    if (FAILED(call->result)) continue;
    for (const auto& entry : call->answer.entries) {
      answers.records.push_back({{type, IdIn(entry.value)}, &entry.value});
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
  const auto record = std::find_if(answers.records.begin(), answers.records.end(),
                                   [&](const auto& answer) { return answer.first == key; });
  if (!answers.asked.contains(key)) {
    person.reason = Reason::kExcluded;
  } else if (record == answers.records.end()) {
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

// Nobody gets what fails as a whole.
void Settle(Channel& channel, const Text& expected, const Text& requested) {
  const bool hasRequest = !channel.request.is_null();
  if (hasRequest && requested != expected) channel.problem = Say(words::kDiffers);
  if (!hasRequest && channel.problem.empty()) channel.problem = Say(words::kNothingThere);
  if (channel.sent) return;
  for (auto& person : channel.people) {
    if (person.reason == Reason::kGetsIt) person.reason = Reason::kFailed;
  }
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

// The one request that the short-message gateway gets.
const Snapshot* SmsRequest(const Sending& sending) {
  const auto* call = FindCall(sending, kSmsGateway, L"SmsSendForBillCheck");
  if (!call || call->arguments.empty() || call->arguments[0].entries.empty()) return nullptr;
  return &call->arguments[0].entries[0].value;
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
  Settle(channel, expected, requested);
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
  Settle(channel, expected, requested);
  return channel;
}

namespace {

struct Telling {
  std::set<std::int32_t> candidates;
  std::map<std::int32_t, bool> told;
};

Telling TellingOf(const Sending& sending) {
  Telling telling;
  const auto* call = FindCall(sending, kRecipients, L"GetIsUserNeedSend");
  if (!call || call->arguments.size() < 2) return telling;
  for (const auto& entry : call->arguments[1].entries) telling.candidates.insert(IdIn(entry.value));
  if (FAILED(call->result)) return telling;
  for (const auto& entry : call->answer.entries) {
    const auto* told = entry.value.Find(L"FIsNeedSend");
    telling.told[IdIn(entry.value)] = told && told->value.OrEmpty().ToBool();
  }
  return telling;
}

Reason NoticeReason(Person& person, const Telling& telling, const Users& users, std::map<Text, std::int32_t>& numbers) {
  if (!telling.candidates.contains(person.id)) return Reason::kExcluded;
  const auto told = telling.told.find(person.id);
  person.wasAnswered = told != telling.told.end();
  if (!person.wasAnswered || !told->second) return Reason::kNotTold;
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
  auto channel = Start(ChannelKind::kApproval, sending);
  const auto* request = SmsRequest(sending);
  if (request) SetRequest(channel, kSmsGateway, ToJson(*request, input.secrets));
  const auto list = PackageAt(input.message, L"MessageUsers"_key);
  const auto listed = ListedIn(list, false);
  if (!channel.sent) channel.problem = FailureOf(sending, input, {kRecipients, kClassInfo, kSmsGateway});
  if (!channel.sent && channel.problem.empty()) channel.problem = ListProblem(list, listed);
  input.users.Ask(IdsOf(listed));
  const auto telling = TellingOf(sending);
  std::map<Text, std::int32_t> numbers;
  for (const auto& entry : listed) {
    auto person = PersonOf(entry, input.users);
    person.reason = NoticeReason(person, telling, input.users, numbers);
    channel.people.push_back(std::move(person));
  }
  std::multiset<Text> expected;
  for (const auto& [number, user] : numbers) expected.insert(number);
  const bool explained = !request || !input.users.AreKnown() || NumbersIn(TextIn(*request, L"Recipients")) == expected;
  Settle(channel, explained ? L"" : L"?", {});
  return channel;
}

}  // namespace tavio::companion
