#include <algorithm>
#include <map>
#include <tuple>

#include "companion/TextTable.h"
#include "companion/preview/Result.h"

namespace tavio::companion {
namespace {

constexpr const char* kReasons[] = {"gets it",    "excluded", "unknown",  "forbidden", "unanswered",
                                    "no address", "dropped",  "not told", "unread",    "failed"};
constexpr const char* kChannels[] = {"system", "mail", "short", "approval"};
constexpr const char* kOrigins[] = {"field", "host", "field or host", "group", "literal"};

const char* NameOf(Reason reason) noexcept { return kReasons[static_cast<int>(reason)]; }

Json ListOf(const std::vector<Text>& texts) {
  Json list = Json::array();
  for (const auto& text : texts) list.push_back(Utf8(text));
  return list;
}

Json ToJson(const Channel& channel, const Person& person) {
  return {{"FUserType", Utf8(person.type)},
          {"FUserID", person.id},
          {"FName", Utf8(person.name)},
          {"FGets", person.reason == Reason::kGetsIt},
          {"FReason", NameOf(person.reason)},
          {"FExplanation", Utf8(Explain(channel, person))},
          {"FAddress", Utf8(person.address)},
          {"Fields", ListOf(person.fields)},
          {"FFieldsAreSure", person.fieldsAreSure},
          {"Within", ListOf(person.within)},
          {"FIsUnknown", person.isUnknown},
          {"FIsForbidden", person.isForbidden},
          {"FWasAnswered", person.wasAnswered}};
}

Json ToJson(const Channel& channel) {
  Json people = Json::array();
  for (const auto& person : channel.people) people.push_back(ToJson(channel, person));
  return {{"FSent", channel.sent},
          {"FComponent", Utf8(channel.component)},
          {"FProblem", Utf8(channel.problem)},
          {"Boxes", ListOf(channel.boxes)},
          {"Request", channel.request},
          {"People", std::move(people)}};
}

Json ToJson(const Variable& variable) {
  return {{"FName", Utf8(variable.name)},
          {"FCaption", Utf8(variable.caption)},
          {"FValue", Utf8(variable.value)},
          {"FOrigin", kOrigins[static_cast<int>(variable.origin)]},
          {"FExplanation", Utf8(OriginOf(variable))},
          {"FIsUsed", variable.isUsed}};
}

Text PeopleTable(const Result& result) {
  Cells head{Say(words::kPerson)};
  for (const auto& channel : result.channels) head.push_back(Say(NameOf(channel.kind)));
  std::vector<Cells> rows{head};
  for (const auto& row : RowsOf(result)) {
    Cells cells{NameOf(row)};
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      const auto* person = row.cells[i];
      const wchar_t* mark = person && person->reason == Reason::kGetsIt ? L"+ " : L"- ";
      cells.push_back(person ? mark + Explain(result.channels[i], *person) : Text());
    }
    rows.push_back(std::move(cells));
  }
  Cells sums{Text()};
  for (const auto& channel : result.channels) sums.push_back(Summary(channel));
  rows.push_back(std::move(sums));
  return TextTable(rows);
}

Text VariableTable(const Result& result) {
  std::vector<Cells> rows;
  for (const auto& variable : result.variables) {
    if (!variable.isUsed) continue;
    rows.push_back({L"  [" + variable.name + L"]", variable.caption, variable.value, OriginOf(variable)});
  }
  return TextTable(rows);
}

Text Line(const Word& name, const Text& text) { return Say(name) + L": " + Plain(text, Lines::kKept) + L"\n"; }

}  // namespace

const Word& NameOf(ChannelKind kind) {
  static constexpr const Word* kNames[] = {&words::kSystemMessage, &words::kMail, &words::kShortMessage,
                                           &words::kApproval};
  return *kNames[static_cast<int>(kind)];
}

std::vector<PersonRow> RowsOf(const Result& result) {
  std::vector<PersonRow> rows;
  std::map<std::tuple<Text, std::int32_t, Text>, std::size_t> places;
  for (std::size_t i = 0; i < result.channels.size(); ++i) {
    for (const auto& person : result.channels[i].people) {
      const Text key = person.id == 0 ? person.name : Text();  // of a list, which is no ID
      const auto [place, fresh] = places.try_emplace({person.type, person.id, key}, rows.size());
      if (fresh) rows.push_back({person.type, person.id, person.name, {}});
      auto& row = rows[place->second];
      row.cells[i] = &person;
      if (row.name.empty()) row.name = person.name;
    }
  }
  return rows;
}

Text NameOf(const PersonRow& row) {
  const Text type = row.type == L"U" ? Text() : row.type + L" ";
  if (row.id == 0 && !row.name.empty()) return type + row.name;
  return type + std::to_wstring(row.id) + (row.name.empty() ? L"" : L" ") + row.name;
}

Text Joined(const std::vector<Text>& texts) {
  Text joined;
  for (const auto& text : texts) joined += (joined.empty() ? L"" : L", ") + text;
  return joined;
}

Text Explain(const Channel& channel, const Person& person) {
  const bool number = channel.kind == ChannelKind::kShortMessage || channel.kind == ChannelKind::kApproval;
  switch (person.reason) {
    case Reason::kGetsIt: {
      Text text = person.address.empty() ? Say(words::kGets) : person.address;
      const auto& field = person.fieldsAreSure ? words::kByField : words::kPerhapsByField;
      if (!person.fields.empty()) text += L" (" + Say(field) + L" " + Joined(person.fields) + L")";
      if (person.isUnknown) text += L" - " + Say(words::kUnknown) + L", " + Say(words::kSentAllTheSame);
      if (person.isForbidden) text += L" - " + Say(words::kForbidden) + L", " + Say(words::kSentAllTheSame);
      return text;
    }
    case Reason::kExcluded:
      return Say(words::kExcluded);
    case Reason::kUnknown:
      return Say(words::kUnknown);
    case Reason::kForbidden:
      return Say(words::kForbidden);
    case Reason::kUnanswered:
      return Say(words::kUnanswered);
    case Reason::kNoAddress:
      return Say(number ? words::kNoNumber : words::kNoAddress);
    case Reason::kDropped:
      if (channel.kind == ChannelKind::kApproval) return Say(words::kSameNumber) + L" " + Joined(person.within);
      return person.address + L" " + Say(words::kDropped) + L" " + Joined(person.within);
    case Reason::kNotTold:
      return Say(person.wasAnswered ? words::kNotTold : words::kNotToldAtAll);
    case Reason::kUnread:
      return Say(words::kUsersUnread);
    case Reason::kFailed:
      return Say(words::kChannelFails);
  }
  return {};
}

Text OriginOf(const Variable& variable) {
  switch (variable.origin) {
    case Origin::kField:
      return Say(words::kOriginField);
    case Origin::kHost:
      return Say(words::kOriginHost);
    case Origin::kFieldOrHost:
      return Say(words::kOriginEither);
    case Origin::kGroup:
      return Say(words::kOriginGroup);
    case Origin::kLiteral:
      break;
  }
  return Say(words::kLiteral) + L": " + Say(variable.why);
}

Text Summary(const Channel& channel) {
  const auto gets = std::count_if(channel.people.begin(), channel.people.end(),
                                  [](const Person& person) { return person.reason == Reason::kGetsIt; });
  Text text = std::to_wstring(gets) + Say(words::kOf) + std::to_wstring(channel.people.size());
  if (!channel.sent) text += L" - " + Say(words::kNothingSent);
  if (!channel.problem.empty()) text += L": " + channel.problem;
  return text;
}

std::vector<Text> NotesOnTitle(const Result& result) {
  std::vector<Text> notes;
  if (result.sentTitle.size() < result.title.size()) notes.push_back(Say(words::kTitleIsCut));
  if (!result.namesInTitle.empty()) notes.push_back(Say(words::kInTitle) + L": " + Joined(result.namesInTitle));
  return notes;
}

std::int32_t FindingsIn(const Result& result) {
  const auto literal = std::count_if(result.variables.begin(), result.variables.end(), [](const Variable& variable) {
    return variable.isUsed && variable.origin == Origin::kLiteral;
  });
  const auto failed = std::count_if(result.channels.begin(), result.channels.end(), [](const Channel& channel) {
    return !channel.problem.empty() && (channel.sent || !channel.people.empty());
  });
  return static_cast<std::int32_t>(literal + failed) + static_cast<std::int32_t>(NotesOnTitle(result).size()) +
         (result.lost.empty() ? 0 : 1);
}

Json ToJson(const Result& result) {
  Json json = {{"FHeading", Utf8(result.heading)},
               {"FFindings", FindingsIn(result)},
               {"FTitle", Utf8(result.title)},
               {"FSentTitle", Utf8(result.sentTitle)},
               {"NamesInTitle", ListOf(result.namesInTitle)},
               {"FCaptions", Utf8(result.captions)},
               {"FValues", Utf8(result.values)},
               {"Lost", ListOf(result.lost)},
               {"Variables", Json::array()},
               {"Channels", Json::object()}};
  for (const auto& variable : result.variables) json["Variables"].push_back(ToJson(variable));
  for (const auto& channel : result.channels) {
    json["Channels"][kChannels[static_cast<int>(channel.kind)]] = ToJson(channel);
  }
  return json;
}

Text ToReadableText(const Result& result) {
  Text text = result.heading.empty() ? Text() : result.heading + L"\n";
  text += Line(words::kTitle, result.sentTitle);
  for (const auto& note : NotesOnTitle(result)) text += L"  ! " + note + L"\n";
  text += Line(words::kWithCaptions, result.captions);
  text += Line(words::kWithValues, result.values);
  if (!result.lost.empty()) text += L"  ! " + Line(words::kLost, Joined(result.lost));
  text += VariableTable(result);
  return text + L"\n" + PeopleTable(result);
}

}  // namespace tavio::companion
