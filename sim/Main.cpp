// vyra-sim's command line. The exit codes stand in report/Report.h.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "BisectArguments.h"
#include "CostArguments.h"
#include "PictureArguments.h"
#include "Run.h"
#include "RunList.h"
#include "bisect/Bisect.h"
#include "choice/ChildFlight.h"
#include "flight/FlightKeys.h"
#include "flight/VocabularyPages.h"
#include "host/ReferencePage.h"
#include "list/List.h"
#include "report/LastEnd.h"
#include "report/Moment.h"
#include "report/Report.h"

namespace {

constexpr double kListRate = 60.0;
constexpr double kStallLimit = 10.0;
constexpr double kMaxStallLimit = 86400.0;

constexpr const char* kExitCodes = R"(Exit codes of a flight:
  0  everything expected happened
  1  an expectation failed or was not reached, a step could not be carried out,
     a module could not be loaded, or there was no plugin at all
  2  wrong usage or input
  3  a plugin ended the flight)";

void AddChoice(CLI::App& command, sim::PluginChoice& choice) {
  CLI::Option* const safeMode =
      command.add_flag("--safe-mode", choice.safeMode, "Fly with PluginAdmin alone");
  command
      .add_option(
          "--skip", choice.skip,
          "Pass over plugins by signature, by the name of their folder or file, or, with a / in it, by "
          "path; * stands for anything. May be given several times")
      ->allow_extra_args(false);
  command.add_option("--only", choice.only, "Pass over all others")
      ->allow_extra_args(false)
      ->excludes(safeMode);
}

void AddStallLimit(CLI::App& command, double& limit) {
  limit = isatty(STDOUT_FILENO) != 0 ? 0.0 : kStallLimit;
  command
      .add_option("--stall-limit", limit,
                  "End the flight when a call into a plugin lasts longer than so many seconds; 0 for never. "
                  "Without it, 10 when standard output is no terminal")
      ->check(CLI::Range(0.0, kMaxStallLimit));
}

CLI::App& AddFlight(CLI::App& app, const char* command, const char* meaning, sim::FlightOptions& options) {
  CLI::App* const run = app.add_subcommand(command, meaning);
  // These three may stand in the flight file instead.
  run->add_option("--system", options.systemPath, "The simulator folder");
  run->add_option("--frames", options.frames, "Frames to fly")->check(CLI::Range(1, sim::kMaxFrames));
  run->add_option("--rate", options.rate, "Frames per simulated second")
      ->check(CLI::Range(sim::kMinRate, sim::kMaxRate));
  run->add_option("--log", options.logFile, "Write the log to this file, not to standard error");
  run->add_option("--flight", options.flightFile, "What happens in the flight and what to expect (JSON)");
  run->add_option("--report", options.reportFile, "Write what came of the flight to this file (JSON)");
  run->add_option("--junit", options.junitFile, "Write it to this file as JUnit does");
  AddChoice(*run, options.plugins);
  run->add_flag("--realtime", options.realTime, "Fly in real time, not as fast as possible");
  AddStallLimit(*run, options.stallLimit);
  run->add_flag("--core", options.wantsCore,
                "Die of the signal that a plugin was hit by, and leave a core file");
  run->add_flag("!--no-supervisor", options.isSupervised,
                "Fly in this process itself. A crash then ends it without a report");
  run->add_flag("--keep-modules", options.keepsModules,
                "Keep plugins' modules in memory at the end, so that reports of leaks can name their code");
  options.stateFolder = sim::DefaultStateFolder();
  run->add_option(
      "--state", options.stateFolder,
      "Remember in this folder which plugin ended a flight, and how the panels lay; empty for nowhere");

  sim::AddCostOptions(*run, options.costs);
  sim::AddPictureOptions(*run, options.pictures);
  return *run;
}

void AddWatch(CLI::App& run, sim::OnChange& onChange) {
  const std::map<std::string, sim::OnChange> answers = {{"reload", sim::OnChange::Reload},
                                                        {"restart", sim::OnChange::StartOver}};
  run.add_flag(
         "--watch{reload}", onChange,
         "Reload all plugins when the file of a module changed; with --watch=restart, start the flight over")
      ->transform(CLI::CheckedTransformer(answers))
      ->option_text("[=restart]");
}

// The name of a list is asked for as it is written.
struct ListArguments {
  std::string name;
  bool asJson = false;
};

CLI::App& AddList(CLI::App& app, sim::FlightOptions& options, ListArguments& arguments) {
  CLI::App* const list = app.add_subcommand("list", "Print what there is in a flight, and whose it is");
  std::vector<std::string> names;
  for (const sim::List& one : sim::Lists()) names.emplace_back(one.name);
  list->add_option("what", arguments.name, "What to list")->required()->check(CLI::IsMember(names));
  list->add_option("--system", options.systemPath, "The simulator folder")->required();
  list->add_option("--frames", options.frames, "Frames to fly before, at 60 Hz; 1 without it")
      ->check(CLI::Range(0, sim::kMaxFrames));
  list->add_option("--flight", options.flightFile, "What happens in the flight (JSON)");
  list->add_option("--log", options.logFile, "Write the log to this file; it goes nowhere without it");
  list->add_flag("--json", arguments.asJson, "Print JSON: an array of objects");
  AddChoice(*list, options.plugins);
  AddStallLimit(*list, options.stallLimit);
  return *list;
}

int PrintList(sim::FlightOptions options, const ListArguments& arguments) {
  const auto list = std::ranges::find(sim::Lists(), arguments.name, &sim::List::name);
  return sim::RunList(std::move(options), *list, arguments.asJson);
}

int PrintReference() {
  std::fputs(sim::ReferencePage().c_str(), stdout);
  return sim::kExitPassed;
}

int PrintVocabulary(bool asSchema) {
  std::fputs((asSchema ? sim::VocabularySchema() : sim::VocabularyPage()).c_str(), stdout);
  return sim::kExitPassed;
}

int ReadCommandLineAndRun(int argumentCount, char** arguments) {
  CLI::App app("Reference simulator of the plugin manager VYRA", "vyra-sim");
  app.require_subcommand(1);
  app.footer(kExitCodes);
  sim::FlightOptions options;
  CLI::App& run = AddFlight(app, "run", "Fly a simulator folder's plugins without a window", options);
  run.footer(kExitCodes);
  run.add_flag("--window", options.hasWindow,
               "Fly by hand in a window, in real time, until it is closed or the frames are over; without "
               "--rate, at 60 Hz");
  AddWatch(run, options.onChange);
  sim::BisectOptions search;
  CLI::App& bisect =
      AddFlight(app, "bisect", "Find which plugins make a flight fail; arguments as for run", options);
  sim::AddBisectOptions(bisect, search);
  sim::FlightOptions listed;
  listed.frames = 1;
  listed.rate = kListRate;
  listed.logFile = "/dev/null";
  ListArguments listArguments;
  const CLI::App& list = AddList(app, listed, listArguments);
  bool asSchema = false;
  CLI::App* const vocabulary =
      app.add_subcommand("vocabulary", "Print what a flight file may say (Markdown)");
  vocabulary->add_flag("--schema", asSchema,
                       "Print it as a JSON schema, by which editors complete and check");
  const CLI::App* const reference =
      app.add_subcommand("reference", "Print the simulator's own datarefs and commands (Markdown)");
  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::Success& help) {
    return app.exit(help);
  }
  if (run.parsed() || bisect.parsed()) sim::CompleteFromFlightFile(options);
  if (bisect.parsed()) {
    sim::CompleteBisectOptions(bisect, options, search);
    return sim::Bisect(search);
  }
  if (list.parsed()) return PrintList(std::move(listed), listArguments);
  if (reference->parsed()) return PrintReference();
  return run.parsed() ? sim::Run(options) : PrintVocabulary(asSchema);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  try {
    // Whoever reads it through a pipe or in a file has every line when the process ends badly.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return ReadCommandLineAndRun(argumentCount, arguments);
  } catch (const sim::Interrupted& interruption) {
    std::signal(interruption.signal, SIG_DFL);
    return std::raise(interruption.signal);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vyra-sim: %s\n", error.what());
    return sim::kExitWrongInput;
  }
}
