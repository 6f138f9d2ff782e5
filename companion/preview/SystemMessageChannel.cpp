#include <span>

#include "companion/preview/ChannelParts.h"
#include "foundation/packages/Fields.h"

namespace tavio::companion {
namespace {

constexpr wchar_t kCommand[] = L"TavioAppCommand.Command";
constexpr std::size_t kMost = 32767;

Json NamedArguments(const Call& call, std::span<const char* const> names, const Secrets& secrets) {
  Json request;
  auto argument = call.arguments.begin();
  for (const auto* name : names) {
    if (argument != call.arguments.end()) request[name] = ToJson(*argument++, secrets);
  }
  return request;
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

// Answers the users of the request.
std::vector<std::int32_t> SetCommand(Channel& channel, const Sending& sending, const Secrets& secrets) {
  const auto* call = FindCall(sending, kCommand, L"SendMessage");
  if (!call || call->arguments.size() != 9) return {};
  constexpr const char* kNames[] = {"ConnectString", "Content", "Length", "Title",  "Recipients",
                                    "Sender",        "Flag1",   "Flag2",  "Command"};
  SetRequest(channel, kCommand, NamedArguments(*call, kNames, secrets));
  return call->arguments[4].value.ToIntegers();
}

// The operation shows no box for a list without users.
void TellProblem(Channel& channel, const Dictionary& list, const std::vector<Listed>& listed) {
  if (channel.sent) return;
  channel.problem = channel.boxes.empty() ? ListProblem(list, listed) : JoinedBoxes(channel.boxes);
  if (!channel.boxes.empty() && listed.size() > kMost) {
    channel.problem = Say(words::kTooMany) + L": " + channel.problem;
  }
}

}  // namespace

Channel SystemMessageOf(const Sending& sending, const ChannelInput& input) {
  auto channel = Start(ChannelKind::kSystemMessage, sending, input);
  const auto list = PackageAt(input.message, L"MessageUsers"_key);
  const auto listed = ListedIn(list, false);
  const auto sentTo = SetCommand(channel, sending, input.secrets);
  TellProblem(channel, list, listed);

  const auto ids = IdsOf(listed);
  const std::set<std::int32_t> reached(sentTo.begin(), sentTo.end());
  auto asked = ids;
  asked.insert(reached.begin(), reached.end());
  input.users.Ask(asked);
  const bool failed = !channel.sent && !channel.boxes.empty();
  for (const auto& entry : listed) {
    auto person = PersonOf(entry, input.users);
    TellOfUser(person, input.users);
    person.reason = failed ? Reason::kFailed : reached.contains(entry.id) ? Reason::kGetsIt : Reason::kExcluded;
    channel.people.push_back(std::move(person));
  }
  AddFieldUsers(channel, sentTo, ids, input);
  return channel;
}

}  // namespace tavio::companion
