// vyra-sim's command line. The exit codes stand in report/Report.h.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>

#include "BisectArguments.h"
#include "CostArguments.h"
#include "Run.h"
#include "bisect/Bisect.h"
#include "bisect/ChildFlight.h"
#include "flight/VocabularyPages.h"
#include "report/LastEnd.h"
#include "report/Moment.h"
#include "report/Report.h"

namespace {

constexpr double kMaxRate = 1000.0;
constexpr double kStallLimit = 10.0;
constexpr double kMaxStallLimit = 86400.0;

constexpr const char* kExitCodes = R"(Exit codes of a flight:
  0  everything expected happened
  1  an expectation failed or was not reached, a step could not be carried out,
     a module could not be loaded, or there was no plugin at all
  2  wrong usage or input
  3  a plugin ended the flight)";

CLI::App& AddFlight(CLI::App& app, const char* command, const char* meaning, sim::FlightOptions& options) {
  CLI::App* const run = app.add_subcommand(command, meaning);
  run->add_option("--system", options.systemPath, "The simulator folder")->required();
  run->add_option("--frames", options.frames, "Frames to fly")
      ->required()
      ->check(CLI::Range(1, sim::kMaxFrames));
  run->add_option("--rate", options.rate, "Frames per simulated second")
      ->required()
      ->check(CLI::Range(1.0, kMaxRate));
  run->add_option("--log", options.logFile, "Write the log to this file, not to standard error");
  run->add_option("--flight", options.flightFile, "What happens in the flight and what to expect (JSON)");
  run->add_option("--report", options.reportFile, "Write what came of the flight to this file (JSON)");
  run->add_option("--junit", options.junitFile, "Write it to this file as JUnit does");
  run->add_flag("--realtime", options.realTime, "Fly in real time, not as fast as possible");
  options.stallLimit = isatty(STDOUT_FILENO) != 0 ? 0.0 : kStallLimit;
  run->add_option("--stall-limit", options.stallLimit,
                  "End the flight when a call into a plugin lasts longer than so many seconds; 0 for never. "
                  "Without it, 10 when standard output is no terminal")
      ->check(CLI::Range(0.0, kMaxStallLimit));
  run->add_flag("--core", options.wantsCore,
                "Die of the signal that a plugin was hit by, and leave a core file");
  run->add_flag("!--no-supervisor", options.isSupervised,
                "Fly in this process itself. A crash then ends it without a report");
  options.stateFolder = sim::DefaultStateFolder();
  run->add_option("--state", options.stateFolder,
                  "Remember in this folder which plugin ended a flight; empty for nowhere");

  sim::AddCostOptions(*run, options.costs);
  return *run;
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
  sim::BisectOptions search;
  CLI::App& bisect =
      AddFlight(app, "bisect", "Find which plugins make a flight fail; arguments as for run", options);
  sim::AddBisectOptions(bisect, search);
  bool asSchema = false;
  CLI::App* const vocabulary =
      app.add_subcommand("vocabulary", "Print what a flight file may say (Markdown)");
  vocabulary->add_flag("--schema", asSchema,
                       "Print it as a JSON schema, by which editors complete and check");
  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::Success& help) {
    return app.exit(help);
  }
  if (bisect.parsed()) {
    sim::CompleteBisectOptions(bisect, options, search);
    return sim::Bisect(search);
  }
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
