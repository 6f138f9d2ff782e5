#include <TavioCompanion.h>

#include <memory>

#include "companion/Words.h"
#include "companion/exchange/Exchange.h"
#include "companion/tavio/Console.h"
#include "companion/tavio/Listing.h"
#include "companion/tavio/Progress.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/CodePage.h"

namespace tavio {
namespace {

struct CheckArguments {
  std::int32_t type = 0;
  std::string against;
  std::vector<std::string> known;
};

// Notes are told, and are no reason for a script to stop.
bool IsGrave(const Dictionary& finding) { return !finding.Get(L"FSeverity"_key)->EqualsText(L"note"); }

// Words about a file begin with its name.
template <class Read>
auto About(const std::string& file, Read&& read) try {
  return read();
} catch (const Error& error) {
  throw Error(error.Number(), error.Source(), FromUtf8(file) + L":" + error.Description());
}

void ShowFindings(const CheckArguments& given, Run& run) {
  const auto checker = CreateCompanion(L"TavioCompanion.Checker", __uuidof(::Checker));
  for (const auto& name : given.known) checker.Call(L"Known", FromUtf8(name));
  if (!given.against.empty()) {
    const auto older = console::ReadFile(FromUtf8(given.against));
    About(given.against, [&] { return companion::ReadExport(older, given.type); });
    checker.Call(L"Against", FromUtf8(older));
  }
  const auto findings = [&] {
    const Progress progress(L"check");
    return Vector(checker.Call(L"OfType", given.type));
  }();
  console::Print(checker.Read(run.json ? L"Json" : L"Text").ToText() + (run.json ? L"\n" : L""));
  for (const auto& finding : Records(findings)) {
    if (IsGrave(finding)) run.exitCode = kFindings;
  }
}

void ImportFile(std::int32_t type, const std::string& file, bool dryRun, Run& run) {
  const auto text = console::ReadFile(FromUtf8(file));
  const auto exported = About(file, [&] { return companion::ReadExport(text, type); });
  const Progress progress(L"import");
  companion::Import import(type, exported);
  PrintRecords(import.Changes(), run);
  if (import.Changes().empty()) return console::PrintError(companion::Say(companion::words::kNothingToChange) + L"\n");
  if (!dryRun) import.Save();
}

}  // namespace

void AddDesignVerbs(CLI::App& app, Run& run) {
  const auto given = std::make_shared<CheckArguments>();
  auto* check = app.add_subcommand("check", "Check the actions and messages of a bill type");
  check->add_option("TYPE", given->type, "Class type ID of the bill")->required();
  check->add_option("--against", given->against, "An older export: tells of renamed and lost fields");
  check->add_option("--known", given->known, "A variable that hosts add; may be given again")->take_all();
  check->callback([given, &run] { ShowFindings(*given, run); });

  const auto type = std::make_shared<std::int32_t>();
  const auto file = std::make_shared<std::string>();
  const auto dryRun = std::make_shared<bool>(false);
  auto* exporting = app.add_subcommand("export", "Print template, fields, actions and messages of a bill type as JSON");
  exporting->add_option("TYPE", *type, "Class type ID of the bill")->required();
  exporting->callback([type] {
    const auto exported = [&] {
      const Progress progress(L"export");
      return companion::ExportOf(*type);
    }();
    console::Print(companion::ToFile(exported));
  });

  auto* importing = app.add_subcommand("import", "Take over the actions and messages of an export");
  importing->add_option("TYPE", *type, "Class type ID of the bill")->required();
  importing->add_option("FILE", *file, "What export printed")->required();
  importing->add_flag("--dry-run", *dryRun, "Show what would change, and store nothing");
  importing->callback([type, file, dryRun, &run] { ImportFile(*type, *file, *dryRun, run); });
}

}  // namespace tavio
