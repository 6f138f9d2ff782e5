#include <memory>

#include "companion/Packages.h"
#include "companion/tavio/Console.h"
#include "companion/tavio/Listing.h"
#include "companion/tavio/Progress.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/CodePage.h"

namespace tavio {
namespace {

Component Data() { return Component::Create(L"TavioDevPlatform.Data"); }

Json Tables(const Dictionary& description) {
  Json records = Json::array();
  for (const auto& table : Entries(PackageAt(description, L"Tables"_key))) {
    records.push_back({{"Table", ToUtf8(table.KeyView())}, {"Rows", table.Stored().ToInt32()}});
  }
  return records;
}

void Describe(const Run& run) {
  const Dictionary description(Data().Call(L"Describe"));
  const Text database = TextAt(description, L"FDatabase"_key);
  if (run.json) {
    const Json json = {{"FDatabase", ToUtf8(database)},
                       {"FVersion", FieldOf(*description.Get(L"FVersion"_key))},
                       {"Tables", Tables(description)}};
    return console::Print(companion::ToText(json) + L"\n");
  }
  console::PrintError(database + L"\n");
  PrintRecords(Tables(description), run);
}

// Says which database it is before it asks: a reset takes everything.
void Reset(bool withoutAsking, Run& run) {
  const auto data = Data();
  const Text name = TextAt(Dictionary(data.Call(L"Describe")), L"FDatabase"_key);
  console::PrintError(name + L"\n");
  if (!withoutAsking) console::PrintError(L"Everything in it is lost. Reset? [y/N] ");
  if (!withoutAsking && console::ReadLine() != L"y") {
    run.exitCode = kFindings;
    return;
  }
  const Progress progress(L"reset");
  data.Call(L"Reset", name);
}

}  // namespace

void AddDataVerbs(CLI::App& app, Run& run) {
  auto* data = app.add_subcommand("data", "Look after the development platform's data");
  data->require_subcommand(1);
  data->add_subcommand("describe", "Name the database and count its rows")->callback([&run] { Describe(run); });
  data->add_subcommand("export", "Print all data as JSON, passwords of mail settings included")->callback([] {
    const auto exported = [] {
      const Progress progress(L"export");
      return Data().Call(L"Export").ToText();
    }();
    console::Print(exported + L"\n");
  });
  const auto file = std::make_shared<std::string>();
  auto* importing = data->add_subcommand("import", "Replace the tables that a file names");
  importing->add_option("FILE", *file, "What export printed, or a part of it")->required();
  importing->callback([file] {
    const auto text = FromUtf8(console::ReadFile(FromUtf8(*file)));
    const Progress progress(L"import");
    Data().Call(L"Import", text);
  });
  const auto yes = std::make_shared<bool>(false);
  auto* reset = data->add_subcommand("reset", "Bring the data back to the seed");
  reset->add_flag("--yes", *yes, "Do not ask");
  reset->callback([yes, &run] { Reset(*yes, run); });
}

}  // namespace tavio
