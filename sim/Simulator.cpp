// A flight from its start to its end. The order of a frame stands in RunFrame.
#include "Simulator.h"

#include <fmt/format.h>

#include <chrono>
#include <exception>
#include <filesystem>
#include <thread>

#include "AiPlanes.h"
#include "Commands.h"
#include "FlightRunner.h"
#include "HostServices.h"
#include "InputError.h"
#include "Log.h"
#include "Narrator.h"
#include "Objects.h"
#include "SimulatorDataRefs.h"
#include "Summary.h"
#include "VYRAProcessing.h"
#include "View.h"
#include "World.h"

namespace sim {
namespace {

constexpr size_t kPathBuffer = 512;  // as the library reads the system path, with room for a file name
constexpr size_t kFileNameRoom = 32;

std::string NormalSystemPath(const std::string& folder) {
  if (!std::filesystem::is_directory(folder)) throw InputError("there is no simulator folder " + folder);
  std::string path = std::filesystem::absolute(folder).lexically_normal().string();
  if (!path.ends_with('/')) path += '/';
  if (path.size() + kFileNameRoom > kPathBuffer) throw InputError("the path is too long: " + path);
  return path;
}

// One flight-loop pass, timed. The library carries out a reload at the end of a pass, so the time of such a
// pass has it in it.
void RunPass(int event, FlightReport& report) {
  const auto start = std::chrono::steady_clock::now();
  VYRAEventHook(event, nullptr, nullptr, static_cast<float>(gWorld.elapsedSeconds), 0.0F);
  const std::chrono::duration<float, std::micro> duration = std::chrono::steady_clock::now() - start;
  report.passMicroseconds.push_back(duration.count());
}

void TellNews(int moment, Narrator& narrator) {
  for (const std::string& text : gWorld.news) narrator.Tell(moment, text);
  gWorld.news.clear();
}

void RunFrame(int frame, double rate, FlightRunner& runner, Narrator& narrator, FlightReport& report) {
  const int reloadsBefore = gWorld.reloads;
  runner.CarryOutSteps(frame);
  gWorld.frame = frame;
  gWorld.elapsedSeconds = frame / rate;
  gWorld.aircraft.Advance(1.0 / rate);
  FinishLoads();
  RunPass(VYRA_EVENT_FLIGHT_LOOPS_0, report);
  ContinueHeldCommands();
  VYRAEventHook(VYRA_EVENT_COMMAND_REPEAT, nullptr, nullptr, 0.0F, 0.0F);
  DrawFrame();
  AskCamera();
  RunPass(VYRA_EVENT_FLIGHT_LOOPS_1, report);
  WatchAiPlanes();
  if (gWorld.reloads != reloadsBefore)
    narrator.Tell(frame, "all plugins reloaded: " + DescribeDifference(ListPlugins(), {}));
  TellNews(frame, narrator);
  runner.CheckExpectations(frame);
  ++report.frames;
}

void RunFrames(const FlightOptions& options, FlightRunner& runner, Narrator& narrator, FlightReport& report) {
  const auto start = std::chrono::steady_clock::now();
  for (int frame = 1; frame <= options.frames; ++frame) {
    RunFrame(frame, options.rate, runner, narrator, report);
    narrator.ShowProgress(frame, options.frames);
    if (options.realTime)
      std::this_thread::sleep_until(start + std::chrono::duration<double>(frame / options.rate));
  }
  narrator.ClearProgress();
  runner.CheckExpectations(kAtEnd);
}

// Runs a part of the flight and says whether it came to its end. An exception of a plugin is reported here
// and now, while the module that threw it is still open.
template <typename Part>
bool CameToItsEnd(Narrator& narrator, const Part& part) {
  std::string reason = "an exception that is no std::exception";
  try {
    part();
    return true;
  } catch (const std::exception& exception) {
    reason = exception.what();
  } catch (...) {
    // Any other type, of which nothing more is known.
  }
  narrator.ClearProgress();
  fmt::print(stderr, "vyra-sim: an exception left the plugins in frame {}: {}\n", gWorld.frame, reason);
  return false;
}

// From the library's start to its shutdown.
bool FlyToTheEnd(const FlightOptions& options, FlightRunner& runner, Narrator& narrator,
                 FlightReport& report) {
  VYRAHostServices services = MakeHostServices();
  const bool flown = CameToItsEnd(narrator, [&] {
    VYRAInitializePlugins(gWorld.systemPath.c_str(), &services, nullptr);
    fmt::print("{:<12}{}: {}\n", "start", gWorld.systemPath, DescribeDifference(ListPlugins(), {}));
    StartAiPlanes();
    RunFrames(options, runner, narrator, report);
  });
  report.plugins = ListPlugins();
  report.passes = VYRAGetCycleNumber();
  const bool shutDown = CameToItsEnd(narrator, VYRAShutdownPlugins);
  FinishAllLoads();
  WatchAiPlanes();
  TellNews(kAfterShutdown, narrator);
  if (flown && shutDown) runner.CheckExpectations(kAfterShutdown);
  return flown && shutDown;
}

}  // namespace

bool Fly(const FlightOptions& options) {
  gWorld.systemPath = NormalSystemPath(options.systemPath);
  Flight flight;
  if (!options.flightFile.empty()) flight = ReadFlight(options.flightFile, gWorld.systemPath, options.frames);
  Log log(options.logFile);
  gWorld.log = &log;
  // On the terminal, progress between lines of the log would tear both.
  Narrator narrator(!options.logFile.empty());
  FlightRunner runner(std::move(flight), log, narrator);
  FlightReport report;
  report.rate = options.rate;
  report.passMicroseconds.reserve(2 * static_cast<size_t>(options.frames));

  RegisterSimulatorDataRefs();
  PublishPlaneSwitches();
  const bool completed = FlyToTheEnd(options, runner, narrator, report);
  report.warnings = log.CountWarnings();
  report.held = runner.HeldCount();
  report.activity = gWorld.activity;
  report.failures = runner.FailureCount();
  PrintSummary(report);
  if (!log.Close()) throw InputError("not all of the log could be written to " + options.logFile);
  return completed && report.failures == 0;
}

}  // namespace sim
