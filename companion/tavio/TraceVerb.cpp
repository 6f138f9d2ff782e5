#include <TavioCompanion.h>

#include <exception>
#include <memory>

#include "companion/tavio/Console.h"
#include "companion/tavio/Progress.h"
#include "companion/tavio/ScriptHost.h"
#include "companion/tavio/Verbs.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"

namespace tavio {
namespace {

struct TraceArguments {
  std::string script;
  std::vector<std::string> arguments;
  std::string html;
};

void TraceScript(const TraceArguments& given, Run& run) {
  std::vector<Text> arguments;
  for (const auto& argument : given.arguments) arguments.push_back(FromUtf8(argument));
  const auto recorder = CreateCompanion(L"TavioCompanion.Recorder", __uuidof(::Recorder));
  recorder.Call(L"Trace");
  int exitCode = 0;
  std::exception_ptr failure;  // told last: what led to it is wanted most
  try {
    const Progress progress(L"trace");
    exitCode = RunScript(FromUtf8(given.script), arguments);
  } catch (const Error&) {
    failure = std::current_exception();
  }
  recorder.Call(L"Stop");
  console::Print(recorder.Read(run.json ? L"Json" : L"Text").ToText() + (run.json ? L"\n" : L""));
  if (!given.html.empty()) console::WriteFile(FromUtf8(given.html), recorder.Read(L"Html").ToText());
  if (failure) std::rethrow_exception(failure);
  if (exitCode != 0) run.exitCode = kFindings;
}

}  // namespace

void AddTraceVerb(CLI::App& app, Run& run) {
  const auto given = std::make_shared<TraceArguments>();
  auto* verb = app.add_subcommand("trace", "Run a VBScript or JScript host and show what it made the library do");
  verb->add_option("SCRIPT", given->script, "The script")->required();
  verb->add_option("ARGUMENTS", given->arguments, "For the script");
  verb->add_option("--html", given->html, "File for the trace as a page");
  verb->callback([given, &run] { TraceScript(*given, run); });
}

}  // namespace tavio
