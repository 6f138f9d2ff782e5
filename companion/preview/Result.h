#pragma once

#include <array>

#include "companion/Packages.h"
#include "companion/Words.h"

namespace tavio::companion {

// What a preview found out.

enum class Reason {
  kGetsIt,
  kExcluded,
  kUnknown,
  kForbidden,
  kUnanswered,
  kNoAddress,
  kDropped,
  kNotTold,
  kUnread,
  kFailed
};

struct Person {
  Text type = L"U";  // as in FUserType
  std::int32_t id = 0;
  Text name;  // empty if nobody knows it
  Reason reason = Reason::kGetsIt;
  Text address;              // or number
  std::vector<Text> fields;  // the bill fields that brought them in, who are not listed
  bool fieldsAreSure = true;
  std::vector<Text> within;  // of what is joined so far, if they were dropped; for a notice the users of that number
  // The platform's word on users who get a system message all the same, or on why it did not answer.
  bool isUnknown = false;
  bool isForbidden = false;
  bool wasAnswered = true;  // whether the platform said anything about telling them
};

enum class ChannelKind { kSystemMessage, kMail, kShortMessage, kApproval };

struct Channel {
  ChannelKind kind = ChannelKind::kSystemMessage;
  bool sent = false;        // what the operation answered
  Text component;           // that the request went to; empty if there was none
  Json request;             // null if there was none
  std::vector<Text> boxes;  // that its user would have seen
  Text problem;             // of the whole channel; empty if there is none
  std::vector<Person> people;
};

enum class Origin { kField, kHost, kFieldOrHost, kGroup, kLiteral };

struct Variable {
  Text name;
  Text caption;
  Text value;
  Origin origin = Origin::kLiteral;
  Word why = {L"", L""};  // it stays as it is
  bool isUsed = false;
};

struct Result {
  Text heading;  // of which action and bill; empty for a host's object
  Text title;
  Text sentTitle;
  std::vector<Text> namesInTitle;  // in brackets, which stay
  Text captions;
  Text values;
  std::vector<Text> lost;  // "€ (U+20AC)"
  std::vector<Variable> variables;
  std::array<Channel, 4> channels;
};

// One person on all channels; null if they are not one of a channel's people.
struct PersonRow {
  Text type;
  std::int32_t id = 0;
  Text name;
  std::array<const Person*, 4> cells = {};
};

// In the order in which they first occur. They refer to `result`.
std::vector<PersonRow> RowsOf(const Result& result);

// "16394 张伟", with the type if it is no user.
Text NameOf(const PersonRow& row);
const Word& NameOf(ChannelKind kind);
// Why they do not get it, or how they came in, in words.
Text Explain(const Channel& channel, const Person& person);
Text OriginOf(const Variable& variable);
// "3 of 5", and why nothing is sent.
Text Summary(const Channel& channel);
// What is to be told of the title: that it is cut, that names in it stay.
std::vector<Text> NotesOnTitle(const Result& result);
// How many things are wrong: names that stay as they are, channels that fail, a title that is not sent as written,
// characters that are lost.
std::int32_t FindingsIn(const Result& result);
Text Joined(const std::vector<Text>& texts);

Json ToJson(const Result& result);
Text ToReadableText(const Result& result);
Text ToPage(const Result& result);

}  // namespace tavio::companion
