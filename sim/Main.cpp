// vyra-sim's command line and exit codes: 0 when everything expected happened, 1 when something did not, 2
// for wrong usage or input.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "Run.h"
#include "report/Moment.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailedExpectation = 1;
constexpr int kWrongInput = 2;

constexpr double kMaxRate = 1000.0;

int Run(int argumentCount, char** arguments) {
  sim::FlightOptions options;
  CLI::App app("Reference simulator of the plugin manager VYRA", "vyra-sim");
  app.require_subcommand(1);
  CLI::App* const run = app.add_subcommand("run", "Fly a simulator folder's plugins without a window");
  run->add_option("--system", options.systemPath, "The simulator folder")->required();
  run->add_option("--frames", options.frames, "Frames to fly")
      ->required()
      ->check(CLI::Range(1, sim::kMaxFrames));
  run->add_option("--rate", options.rate, "Frames per simulated second")
      ->required()
      ->check(CLI::Range(1.0, kMaxRate));
  run->add_option("--log", options.logFile, "Write the log to this file, not to standard error");
  run->add_option("--flight", options.flightFile, "What happens in the flight and what to expect (JSON)");
  run->add_flag("--realtime", options.realTime, "Fly in real time, not as fast as possible");

  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::Success& help) {
    return app.exit(help);
  }
  return sim::Fly(options) ? kSuccess : kFailedExpectation;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  try {
    return Run(argumentCount, arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vyra-sim: %s\n", error.what());
    return kWrongInput;
  }
}
