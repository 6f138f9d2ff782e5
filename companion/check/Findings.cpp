#include "companion/check/Findings.h"

#include <algorithm>

#include "companion/TextTable.h"
#include "companion/preview/Variables.h"
#include "message/MessageTemplate.h"

namespace tavio::companion {
namespace {

constexpr std::size_t kTitleLimit = 50;
constexpr const char* kSeverities[] = {"error", "warning", "note"};
constexpr TextView kTitle = L"FTitle", kText = L"FMessage";

// How many letters must be added, removed or exchanged to make one text of the other.
std::size_t Distance(TextView a, TextView b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const auto exchanged = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = std::exchange(row[j], std::min({row[j] + 1, row[j - 1] + 1, exchanged}));
    }
  }
  return row.back();
}

// The checks of one message, whose findings all have its action and mask.
class MessageCheck {
 public:
  MessageCheck(const Subject& subject, const CheckedAction& action, const CheckedMessage& message, Findings& findings)
      : subject_(subject), action_(action), message_(message), findings_(findings) {}

  void Run(const Users& users) {
    CheckNames();
    CheckTitle();
    CheckBrackets(kTitle, message_.title);
    CheckBrackets(kText, message_.text);
    CheckCodePage(kTitle, message_.title);
    CheckCodePage(kText, message_.text);
    CheckRecipients(users);
    CheckScenario();
  }

 private:
  void Add(const char* rule, Severity severity, TextView place, Text what, const Word& todo, const Text& detail = {}) {
    const Text advice = detail.empty() ? Say(todo) : Say(todo) + L" " + detail;
    findings_.push_back({rule, severity, action_.code, message_.mask, Text(place), std::move(what), advice});
  }

  void CheckNames() {
    for (const auto& name : NamesIn(message_.text)) {
      const auto is = [&](const CheckedField& field) { return field.isVariable && field.name == name; };
      const bool field = std::any_of(subject_.fields.begin(), subject_.fields.end(), is);
      if (!field && !subject_.known.contains(name)) TellUnknown(name);
    }
  }

  void TellUnknown(const Text& name) {
    std::vector<Text> names(subject_.known.begin(), subject_.known.end());
    Text byCaption;
    for (const auto& field : subject_.fields) {
      if (field.isVariable) names.push_back(field.name);
      if (field.isVariable && field.caption == name) byCaption = field.name;
    }
    const Text nearest = byCaption.empty() ? Nearest(name, names) : byCaption;
    Add("unknown variable", Severity::kError, kText, L"[" + name + L"]",
        nearest.empty() ? words::kKnownAddsIt : words::kPerhapsMeant, nearest.empty() ? Text() : L"[" + nearest + L"]");
  }

  void CheckTitle() {
    if (message_.title.size() > kTitleLimit) {
      Add("long title", Severity::kWarning, kTitle, std::to_wstring(message_.title.size()), words::kShortenTitle);
    }
    for (const auto& name : NamesIn(message_.title)) {
      Add("variable in title", Severity::kWarning, kTitle, L"[" + name + L"]", words::kTitleStays);
    }
  }

  void CheckBrackets(TextView place, const Text& text) {
    const auto open = text.rfind(L'[');
    if (open != Text::npos && text.find(L']', open) == Text::npos) {
      Add("unclosed bracket", Severity::kError, place, text.substr(open, 12), words::kCloseBracket);
    }
  }

  void CheckCodePage(TextView place, const Text& text) {
    for (const auto& character : LostIn(text)) {
      Add("outside code page", Severity::kWarning, place, character, words::kReplaceCharacter);
    }
  }

  void CheckRecipients(const Users& users) {
    if (message_.recipients.empty()) {
      const bool byField = std::any_of(subject_.fields.begin(), subject_.fields.end(),
                                       [](const CheckedField& field) { return field.holdsUser; });
      Add("no recipient", byField ? Severity::kNote : Severity::kError, {}, {},
          byField ? words::kOnlyByField : words::kAddRecipient);
    }
    if (!users.AreKnown()) return;
    for (const auto& [list, ids] : message_.recipients) {
      for (const auto id : ids) TellOfUser(list, id, users.Find(id));
    }
  }

  void TellOfUser(const Text& list, std::int32_t id, const Users::User* user) {
    const Text number = std::to_wstring(id);
    if (!user) Add("recipient gone", Severity::kError, list, number, words::kRemoveUser);
    if (user && user->forbidden) {
      Add("recipient forbidden", Severity::kWarning, list, number + L" " + user->name, words::kRemoveUser);
    }
  }

  void CheckScenario() {
    if ((message_.mask & action_.mask) == 0) {
      Add("never fires", Severity::kError, L"FEnvironment", std::to_wstring(action_.mask), words::kChangeMask);
      return;
    }
    bool occurs = false;
    for (const auto scenario : subject_.scenarios) {
      if ((scenario & message_.mask) == 0 || (scenario & action_.mask) == 0) continue;
      occurs = true;
      if (Chosen(scenario) == message_.mask) return;
    }
    if (occurs) {
      Add("hidden", Severity::kError, L"FEnvironment", std::to_wstring(Chosen(message_.mask)), words::kHiddenBy);
    }
  }

  // Of the messages of the action that share a bit with a scenario, the one with the greatest mask is sent.
  std::int32_t Chosen(std::int32_t scenario) const {
    std::int32_t greatest = 0;
    for (const auto& message : action_.messages) {
      if ((message.mask & scenario) != 0) greatest = std::max(greatest, message.mask);
    }
    return greatest;
  }

  const Subject& subject_;
  const CheckedAction& action_;
  const CheckedMessage& message_;
  Findings& findings_;
};

// The first action before this one that shares a bit of its rights; null if none does.
const CheckedAction* FirstWithRightOf(const CheckedAction& action, const std::vector<CheckedAction>& actions) {
  const auto shares = [&](const CheckedAction& other) { return &other == &action || (other.rights & action.rights); };
  const auto found = std::find_if(actions.begin(), actions.end(), shares);
  return &*found == &action ? nullptr : &*found;
}

void CheckDoubles(const Subject& subject, Findings& findings) {
  std::map<Text, int> codes;
  for (const auto& action : subject.actions) {
    if (++codes[action.code] == 2) {
      findings.push_back(
          {"doubled code", Severity::kError, action.code, 0, L"FCode", action.code, Say(words::kChangeCode)});
    }
    const auto* first = FirstWithRightOf(action, subject.actions);
    if (!first) continue;
    findings.push_back({"doubled right", Severity::kNote, action.code, 0, L"FRightMask",
                        std::to_wstring(action.rights & first->rights), Say(words::kSameRight) + L" " + first->code});
  }
}

std::set<std::int32_t> AllUsers(const Subject& subject) {
  std::set<std::int32_t> ids;
  for (const auto& action : subject.actions) {
    for (const auto& message : action.messages) {
      for (const auto& [list, users] : message.recipients) ids.insert(users.begin(), users.end());
    }
  }
  return ids;
}

const CheckedField* FindField(const std::vector<CheckedField>& fields, TextView name) {
  const auto found = std::find_if(fields.begin(), fields.end(), [&](const auto& field) { return field.name == name; });
  return found == fields.end() ? nullptr : &*found;
}

// The field that took the place of a vanished one; null if none did.
const CheckedField* Successor(const CheckedField& vanished, const Subject& older, const Subject& present) {
  for (const auto& field : present.fields) {
    const bool isNew = !FindField(older.fields, field.name);
    if (isNew && field.caption == vanished.caption && field.page == vanished.page) return &field;
  }
  return nullptr;
}

Text WithNewName(const Text& text, const Text& before, const Text& after) {
  Rewriting rewriting(text);
  while (rewriting.NextName()) {
    if (rewriting.Name() == before) rewriting.LendWithin(after);
  }
  return rewriting.ToText();
}

void TellOfRename(const CheckedField& before, const CheckedField& after, const Subject& present, Findings& findings) {
  findings.push_back({"renamed field", Severity::kNote, {}, 0, before.name, after.name, Say(words::kWasRenamed)});
  for (const auto& action : present.actions) {
    for (const auto& message : action.messages) {
      const auto renamed = WithNewName(message.text, before.name, after.name);
      if (renamed == message.text) continue;
      findings.push_back({"broken by rename", Severity::kError, action.code, message.mask, Text(kText),
                          L"[" + before.name + L"]", Say(words::kWriteInstead) + L" " + renamed});
    }
  }
}

void TellOfLostMessages(const CheckedAction& before, const CheckedAction* now, Findings& findings) {
  if (!now) {
    findings.push_back({"lost action", Severity::kWarning, before.code, 0, {}, before.code, Say(words::kIsLost)});
    return;
  }
  for (const auto& message : before.messages) {
    const bool there = std::any_of(now->messages.begin(), now->messages.end(),
                                   [&](const CheckedMessage& other) { return other.mask == message.mask; });
    if (there) continue;
    findings.push_back(
        {"lost message", Severity::kWarning, before.code, message.mask, {}, message.title, Say(words::kIsLost)});
  }
}

}  // namespace

Text Nearest(const Text& name, const std::vector<Text>& names) {
  const Text upper = ToUpper(name);
  const auto limit = std::max<std::size_t>(1, name.size() / 3);
  std::size_t least = limit + 1;
  Text nearest;
  for (const auto& other : names) {
    const auto distance = Distance(upper, ToUpper(other));
    if (distance < least) {
      least = distance;
      nearest = other;
    }
  }
  return nearest;
}

Findings Check(const Subject& subject, Users& users) {
  Findings findings;
  users.Ask(AllUsers(subject));
  if (!users.AreKnown()) {
    findings.push_back({"recipients not checked", Severity::kWarning, {}, 0, {}, L"t_User", Say(words::kUsersUnread)});
  }
  CheckDoubles(subject, findings);
  for (const auto& action : subject.actions) {
    for (const auto& message : action.messages) MessageCheck(subject, action, message, findings).Run(users);
  }
  return findings;
}

Findings CheckAgainst(const Subject& older, const Subject& present) {
  Findings findings;
  for (const auto& field : older.fields) {
    if (FindField(present.fields, field.name)) continue;
    if (const auto* successor = Successor(field, older, present)) {
      TellOfRename(field, *successor, present, findings);
    } else {
      findings.push_back({"lost field", Severity::kWarning, {}, 0, field.name, field.caption, Say(words::kIsLost)});
    }
  }
  for (const auto& action : older.actions) {
    const auto now = std::find_if(present.actions.begin(), present.actions.end(),
                                  [&](const CheckedAction& other) { return other.code == action.code; });
    TellOfLostMessages(action, now == present.actions.end() ? nullptr : &*now, findings);
  }
  return findings;
}

Json ToJson(const Findings& findings) {
  Json list = Json::array();
  for (const auto& finding : findings) {
    list.push_back({{"FRule", finding.rule},
                    {"FSeverity", kSeverities[static_cast<int>(finding.severity)]},
                    {"FCode", Utf8(finding.action)},
                    {"FEnvironment", finding.scenario},
                    {"FPlace", Utf8(finding.place)},
                    {"FWhat", Utf8(finding.what)},
                    {"FToDo", Utf8(finding.todo)}});
  }
  return list;
}

Text ToReadableText(const Findings& findings) {
  if (findings.empty()) return Say(words::kNoFindings) + L"\n";
  std::vector<Cells> rows;
  for (const auto& finding : findings) {
    const Text scenario = finding.scenario ? L" " + std::to_wstring(finding.scenario) : Text();
    rows.push_back({FromUtf8(kSeverities[static_cast<int>(finding.severity)]), FromUtf8(finding.rule),
                    finding.action + scenario, finding.place, finding.what, finding.todo});
  }
  return TextTable(rows);
}

}  // namespace tavio::companion
