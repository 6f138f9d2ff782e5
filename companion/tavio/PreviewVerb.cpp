#include <TavioCompanion.h>

#include <memory>

#include "companion/tavio/Console.h"
#include "companion/tavio/Progress.h"
#include "companion/tavio/Verbs.h"
#include "foundation/values/CodePage.h"

namespace tavio {
namespace {

struct PreviewArguments {
  std::int32_t type = 0;
  std::string action;
  std::string scenario;
  std::int32_t bill = 0;
  std::string html;
};

void ShowPreview(const PreviewArguments& given, Run& run) {
  const auto preview = CreateCompanion(L"TavioCompanion.Preview", __uuidof(::Preview));
  const auto package = [&] {
    const Progress progress(L"preview");
    return Dictionary(
        preview.Call(L"OfBill", given.type, FromUtf8(given.action), FromUtf8(given.scenario), given.bill));
  }();
  console::Print(preview.Read(run.json ? L"Json" : L"Text").ToText() + L"\n");
  if (!given.html.empty()) {
    console::WriteFile(FromUtf8(given.html), preview.Read(L"Html").ToText());
    console::PrintError(FromUtf8(given.html) + L"\n");
  }
  if (package.Get(L"FFindings"_key)->ToInt32() > 0) run.exitCode = kFindings;
}

}  // namespace

void AddPreviewVerb(CLI::App& app, Run& run) {
  const auto given = std::make_shared<PreviewArguments>();
  auto* verb = app.add_subcommand("preview", "Show what a message would be on each channel, who gets it, and why not");
  verb->add_option("TYPE", given->type, "Class type ID of the bill")->required();
  verb->add_option("ACTION", given->action, "Code of the action")->required();
  verb->add_option("SCENARIO", given->scenario, "Mask or name of the scenario")->required();
  verb->add_option("--bill", given->bill, "ID of the bill")->required();
  verb->add_option("--html", given->html, "File for the preview as a page");
  verb->callback([given, &run] { ShowPreview(*given, run); });
}

}  // namespace tavio
