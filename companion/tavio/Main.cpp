// tavio: the companion at a command line. Exit code 0: fine; 1: there are findings; 2: it could not be done.

#include <windows.h>

#include <algorithm>

#include "companion/Words.h"
#include "companion/tavio/Console.h"
#include "companion/tavio/Verbs.h"
#include "foundation/values/CodePage.h"

namespace tavio {
namespace {

std::vector<std::string> Utf8Arguments(int count, wchar_t** arguments) {
  std::vector<std::string> texts;
  for (int i = 1; i < count; ++i) texts.push_back(ToUtf8(arguments[i]));
  return texts;
}

std::string VerbsOf(CLI::App& app) {
  std::string names;
  for (const auto* verb : app.get_subcommands([](const CLI::App*) { return true; }))
    names += (names.empty() ? "" : ", ") + verb->get_name();
  return names;
}

int CouldNot(TextView why) {
  console::PrintError(L"tavio: " + Text(why) + L"\n");
  return kCouldNot;
}

int Parse(CLI::App& app, std::vector<std::string> arguments, const Run& run) try {
  const auto isVerb = [&](const std::string& name) {
    const auto verbs = app.get_subcommands([&](const CLI::App* verb) { return verb->get_name() == name; });
    return !verbs.empty();
  };
  const auto first = std::find_if(arguments.begin(), arguments.end(), [](const auto& a) { return a[0] != '-'; });
  if (arguments.empty()) return CouldNot(FromUtf8("a verb is missing; there are: " + VerbsOf(app)));
  if (first != arguments.end() && !isVerb(*first)) {
    return CouldNot(FromUtf8("unknown verb '" + *first + "'; there are: " + VerbsOf(app)));
  }
  std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
  app.parse(arguments);
  return run.exitCode;
} catch (const CLI::Success&) {
  console::Print(FromUtf8(app.help()));
  return kFine;
} catch (const CLI::ParseError& error) {
  return CouldNot(FromUtf8(error.what()));
} catch (...) {
  return CouldNot(companion::WordsOf(Translate()));
}

int Main(int count, wchar_t** arguments) try {
  CLI::App app("See TavioClassBillAction's messages before they are sent, and test without the platform", "tavio");
  Run run;
  Session session;
  app.require_subcommand(1);
  app.fallthrough();
  app.add_flag("--json", run.json, "Print JSON instead of a table");
  app.parse_complete_callback([&] { session.Unattended(); });
  AddMessageVerbs(app, run);
  AddListingVerbs(app, run);
  AddDesignVerbs(app, run);
  AddDataVerbs(app, run);
  AddTraceVerb(app, run);
  return Parse(app, Utf8Arguments(count, arguments), run);
} catch (...) {
  return CouldNot(companion::WordsOf(Translate()));
}

}  // namespace
}  // namespace tavio

int wmain(int count, wchar_t** arguments) { return tavio::Main(count, arguments); }
