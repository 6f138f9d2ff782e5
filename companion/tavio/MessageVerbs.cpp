#include <TavioCompanion.h>

#include <iterator>
#include <memory>

#include "companion/tavio/Console.h"
#include "companion/tavio/Progress.h"
#include "companion/tavio/Verbs.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/CodePage.h"

namespace tavio {
namespace {

// Which message, about which bill.
struct Which {
  std::int32_t type = 0;
  std::string action;
  std::string scenario;
  std::int32_t bill = 0;

  void AddTo(CLI::App& verb) {
    verb.add_option("TYPE", type, "Class type ID of the bill")->required();
    verb.add_option("ACTION", action, "Code of the action")->required();
    verb.add_option("SCENARIO", scenario, "Mask or name of the scenario")->required();
    verb.add_option("--bill", bill, "ID of the bill")->required();
  }
  Value Ask(const Component& preview, const wchar_t* member) const {
    const Progress progress(member);
    return preview.Call(member, type, FromUtf8(action), FromUtf8(scenario), bill);
  }
};

Component Preview() { return CreateCompanion(L"TavioCompanion.Preview", __uuidof(::Preview)); }

void ShowPreview(const Which& which, const std::string& html, Run& run) {
  const auto preview = Preview();
  const Dictionary result(which.Ask(preview, L"OfBill"));
  console::Print(preview.Read(run.json ? L"Json" : L"Text").ToText() + L"\n");
  if (!html.empty()) {
    console::WriteFile(FromUtf8(html), preview.Read(L"Html").ToText());
    console::PrintError(FromUtf8(html) + L"\n");
  }
  if (NumberAt(result, L"FFindings"_key) > 0) run.exitCode = kFindings;
}

struct Way {
  const char* name;
  const wchar_t* channel;
  const wchar_t* member;
};
constexpr Way kWays[] = {{"message", L"system", L"SendMessage"},
                         {"mail", L"mail", L"SendEmail"},
                         {"short", L"short", L"SendShortMessage"},
                         {"approval", L"approval", L"SendSMS"}};

// Shows the people of a channel; answers how many of them get the message.
int ShowPeople(const Dictionary& channel) {
  int reached = 0;
  for (const auto& person : Records(Vector(*channel.Get(L"People"_key)))) {
    const bool gets = FlagAt(person, L"FGets"_key);
    reached += gets ? 1 : 0;
    console::PrintError((gets ? L"+ " : L"- ") + TextAt(person, L"FUserID"_key) + L" " + TextAt(person, L"FName"_key) +
                        L"  " + TextAt(person, L"FExplanation"_key) + L"\n");
  }
  return reached;
}

bool IsConfirmed() {
  console::PrintError(L"Send? [y/N] ");
  const Text answer = console::ReadLine();
  return answer == L"y" || answer == L"Y" || answer == L"yes";
}

bool Send(const Component& message, const Way& way) {
  const Progress progress(L"send");
  const bool mail = TextView(way.member) == L"SendEmail";
  return (mail ? message.Call(way.member, Value(ComPtr<IDispatch>())) : message.Call(way.member)).ToBool();
}

void SendMessageBy(const Which& which, const Way& way, bool withoutAsking, Run& run) {
  const auto preview = Preview();
  const Dictionary result(which.Ask(preview, L"OfBill"));
  const auto channel = PackageAt(PackageAt(result, L"Channels"_key), Key(TextView(way.channel)));
  const int reached = ShowPeople(channel);
  if (reached == 0) console::PrintError(TextAt(channel, L"FProblem"_key) + L"\n");
  const bool confirmed = reached > 0 && (withoutAsking || IsConfirmed());
  const bool sent = confirmed && Send(Component(which.Ask(preview, L"Compose").ToObject()), way);
  if (run.json) {
    console::Print(sent ? L"{\"sent\": true}\n" : L"{\"sent\": false}\n");
  } else {
    console::Print(sent ? L"sent to " + std::to_wstring(reached) + L"\n" : Text(L"not sent\n"));
  }
  if (!sent) run.exitCode = kFindings;
}

}  // namespace

void AddMessageVerbs(CLI::App& app, Run& run) {
  const auto which = std::make_shared<Which>();
  const auto html = std::make_shared<std::string>();
  auto* preview =
      app.add_subcommand("preview", "Show what a message would be on each channel, who gets it, and why not");
  which->AddTo(*preview);
  preview->add_option("--html", *html, "File for the preview as a page");
  preview->callback([which, html, &run] { ShowPreview(*which, *html, run); });

  const auto by = std::make_shared<std::string>("message");
  const auto yes = std::make_shared<bool>(false);
  auto* send = app.add_subcommand("send", "Show who gets a message, ask, and send it");
  which->AddTo(*send);
  send->add_option("--by", *by, "The channel")
      ->check(CLI::IsMember({"message", "mail", "short", "approval"}))
      ->capture_default_str();
  send->add_flag("--yes", *yes, "Do not ask");
  send->callback([which, by, yes, &run] {
    const auto is = [&](const Way& way) { return *by == way.name; };
    SendMessageBy(*which, *std::find_if(std::begin(kWays), std::end(kWays), is), *yes, run);
  });
}

}  // namespace tavio
