#include <algorithm>
#include <cstdio>

#include "companion/Html.h"
#include "companion/Words.h"
#include "companion/recorder/CallTree.h"

namespace tavio::companion {
namespace {

constexpr TextView kLibrary = L"TavioClassBillAction.";

Text Rounded(double number, const char* format) {
  char text[32];
  std::snprintf(text, sizeof text, format, number);
  return FromUtf8(text);
}

void WriteDuration(Html& html, double duration, double longest) {
  html.Open(L"td").Plain(Rounded(duration, "%.2f ms"));
  const double share = longest > 0 ? std::max(duration / longest * 100, 1.0) : 1.0;
  html.Raw(L"<span class=\"bar\" style=\"width:" + Rounded(share, "%.0f") + L"%\"></span>").Close(L"td");
}

void WriteCall(Html& html, const TreeLine& line, const Secrets& secrets) {
  const auto& call = *line.call;
  html.Open(L"details").Open(L"summary").Element(L"code", NameOf(line));
  if (!call.passed && !call.broken) html.Element(L"span", Say(words::kKeptBack), L"note");
  if (call.broken) html.Element(L"span", Say(words::kBroken), L"note");
  if (FAILED(call.result)) html.Element(L"span", secrets.Masked(call.description), L"no");
  html.Close(L"summary");
  for (const auto& argument : call.arguments) html.Element(L"pre", ToText(ToJson(argument, secrets)));
  if (call.kind == Call::Kind::kCall) {
    html.Element(L"pre", Say(words::kAnswer) + L": " + ToText(ToJson(call.answer, secrets)));
  }
  html.Close(L"details");
}

void WriteEntry(Html& html, const LogEntry& entry) {
  Text label = entry.label;
  if (label.starts_with(kLibrary)) label.erase(0, kLibrary.size());
  html.Element(L"span", label, L"entry");
  if (entry.outcome) html.Raw(L" ").Element(L"code", L"= " + std::to_wstring(*entry.outcome));
}

void WriteLine(Html& html, const TreeLine& line, double longest, const Secrets& secrets) {
  html.Open(L"tr");
  WriteDuration(html, DurationOf(line), longest);
  html.Raw(L"<td style=\"padding-left:" + std::to_wstring(8 + line.depth * 22) + L"px\">");
  if (line.entry) {
    WriteEntry(html, *line.entry);
  } else {
    WriteCall(html, line, secrets);
  }
  html.Close(L"td").Close(L"tr");
}

}  // namespace

Text ToPage(const Recording& recording) {
  const Secrets secrets(recording.Calls());
  const auto lines = LinesOf(recording);
  double longest = 0;
  std::size_t calls = 0;
  for (const auto& line : lines) {
    longest = std::max(longest, DurationOf(line));
    calls += line.call ? 1 : 0;
  }
  auto html = Html::Page(Say(words::kTrace));
  html.Element(L"h1", Say(words::kTrace));
  const Text sums = std::to_wstring(lines.size() - calls) + L" " + Say(words::kEntriesOfLog) + L", " +
                    std::to_wstring(calls) + L" " + Say(words::kCalls);
  html.Element(L"p", recording.HasEntries() || lines.empty() ? sums : sums + L" - " + Say(words::kNoEntries), L"sub");
  html.Open(L"div", L"card").Open(L"table", L"tree").Raw(L"<tbody>\n");
  for (const auto& line : lines) WriteLine(html, line, longest, secrets);
  html.Raw(L"</tbody>").Close(L"table").Close(L"div");
  return html.End();
}

}  // namespace tavio::companion
