#include <algorithm>

#include "companion/Html.h"
#include "companion/preview/Result.h"

namespace tavio::companion {
namespace {

void Pair(Html& html, const Word& name, const Text& text, TextView style = {}) {
  html.Element(L"dt", Say(name)).Element(L"dd", text, style);
}

void WriteMessage(Html& html, const Result& result) {
  html.Open(L"div", L"card").Open(L"dl");
  Pair(html, words::kTitle, result.sentTitle, L"title");
  Pair(html, words::kWithValues, result.values);
  Pair(html, words::kWithCaptions, result.captions);
  html.Close(L"dl");
  auto notes = NotesOnTitle(result);
  if (!result.lost.empty()) notes.push_back(Say(words::kLost) + L": " + Joined(result.lost));
  if (!notes.empty()) html.Open(L"ul", L"notes");
  for (const auto& note : notes) html.Open(L"li").Element(L"span", note, L"note").Close(L"li");
  if (!notes.empty()) html.Close(L"ul");
  html.Close(L"div");
}

void WriteSums(Html& html, const Result& result) {
  html.Open(L"div", L"sums");
  for (const auto& channel : result.channels) {
    const auto gets = std::count_if(channel.people.begin(), channel.people.end(),
                                    [](const Person& person) { return person.reason == Reason::kGetsIt; });
    html.Open(L"div", L"card").Plain(Say(NameOf(channel.kind)));
    html.Element(L"b", std::to_wstring(gets) + Say(words::kOf) + std::to_wstring(channel.people.size()));
    if (!channel.sent) {
      const Text why = channel.problem.empty() ? Text() : L": " + channel.problem;
      html.Element(L"small", Say(words::kNothingSent) + why);
    } else if (!channel.problem.empty()) {
      html.Element(L"small", channel.problem);
    }
    html.Close(L"div");
  }
  html.Close(L"div");
}

void WriteCell(Html& html, const Channel& channel, const Person* person) {
  html.Raw(L"<td data-name=\"").Plain(Say(NameOf(channel.kind))).Raw(L"\">");
  if (person) {
    const bool doubtful = person->isUnknown || person->isForbidden;
    const auto* style = person->reason != Reason::kGetsIt ? L"no" : doubtful ? L"note" : L"yes";
    html.Element(L"span", Explain(channel, *person), style);
  }
  html.Close(L"td");
}

void WritePeople(Html& html, const Result& result) {
  html.Open(L"div", L"card").Open(L"table", L"grid").Raw(L"<thead><tr>").Element(L"th", Say(words::kPerson));
  for (const auto& channel : result.channels) html.Element(L"th", Say(NameOf(channel.kind)));
  html.Raw(L"</tr></thead><tbody>\n");
  for (const auto& row : RowsOf(result)) {
    html.Open(L"tr").Element(L"th", NameOf(row));
    for (std::size_t i = 0; i < row.cells.size(); ++i) WriteCell(html, result.channels[i], row.cells[i]);
    html.Close(L"tr");
  }
  html.Raw(L"</tbody>").Close(L"table").Close(L"div");
}

void WriteVariables(Html& html, const Result& result, bool used) {
  html.Raw(L"<table class=\"grid\"><tbody>\n");
  for (const auto& variable : result.variables) {
    if (variable.isUsed != used) continue;
    html.Open(L"tr").Open(L"td").Element(L"code", L"[" + variable.name + L"]").Close(L"td");
    html.Element(L"td", variable.caption).Element(L"td", variable.value).Open(L"td");
    const bool literal = variable.origin == Origin::kLiteral && used;
    html.Element(L"span", OriginOf(variable), literal ? L"no" : L"").Close(L"td").Close(L"tr");
  }
  html.Raw(L"</tbody>").Close(L"table");
}

void WriteAllVariables(Html& html, const Result& result) {
  html.Open(L"div", L"card");
  WriteVariables(html, result, true);
  const bool others = std::any_of(result.variables.begin(), result.variables.end(),
                                  [](const Variable& variable) { return !variable.isUsed; });
  if (others) {
    html.Open(L"details").Element(L"summary", Say(words::kOthers));
    WriteVariables(html, result, false);
    html.Close(L"details");
  }
  html.Close(L"div");
}

void WriteRequests(Html& html, const Result& result) {
  html.Open(L"div", L"card");
  for (const auto& channel : result.channels) {
    html.Open(L"details").Open(L"summary").Plain(Say(NameOf(channel.kind)) + L" ");
    html.Element(L"code", channel.component.empty() ? Say(words::kNothingSent) : channel.component);
    html.Close(L"summary");
    if (!channel.request.is_null()) html.Element(L"pre", ToText(channel.request));
    for (const auto& box : channel.boxes) html.Element(L"pre", Say(words::kBoxes) + L": " + box);
    html.Close(L"details");
  }
  html.Close(L"div");
}

}  // namespace

Text ToPage(const Result& result) {
  auto html = Html::Page(Say(words::kPreview));
  html.Element(L"h1", Say(words::kPreview)).Element(L"p", result.heading, L"sub");
  WriteMessage(html, result);
  html.Element(L"h2", Say(words::kPeople));
  WriteSums(html, result);
  html.Raw(L"<br>");
  WritePeople(html, result);
  html.Element(L"h2", Say(words::kVariables));
  WriteAllVariables(html, result);
  html.Element(L"h2", Say(words::kRequests));
  WriteRequests(html, result);
  return html.End();
}

}  // namespace tavio::companion
