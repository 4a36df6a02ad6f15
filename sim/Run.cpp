// A flight from its start to its end. The order of a frame stands in host/Frame.cpp.
#include "Run.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <thread>

#include "InputError.h"
#include "VYRAHost.h"
#include "VYRAProcessing.h"
#include "flight/FlightRunner.h"
#include "host/Frame.h"
#include "host/ObjectServices.h"
#include "host/OwnDataRefs.h"
#include "host/PlaneServices.h"
#include "host/PluginList.h"
#include "host/ServiceTable.h"
#include "host/SystemServices.h"
#include "report/Log.h"
#include "report/Moment.h"
#include "report/Narrator.h"
#include "report/News.h"
#include "report/Summary.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr std::size_t kPathBuffer = 512;  // as the library reads the system path, with room for a file name
constexpr std::size_t kFileNameRoom = 32;

std::string NormalSystemPath(const std::string& folder) {
  if (!std::filesystem::is_directory(folder)) throw InputError("there is no simulator folder " + folder);
  std::string path = std::filesystem::absolute(folder).lexically_normal().string();
  if (!path.ends_with('/')) path += '/';
  if (path.size() + kFileNameRoom > kPathBuffer) throw InputError("the path is too long: " + path);
  return path;
}

void TellNews(int moment, Narrator& narrator) {
  for (const std::string& text : gNews) narrator.Tell(moment, text);
  gNews.clear();
}

// A flight that is under way.
struct FlightUnderWay {
  FlightRunner runner;
  Narrator& narrator;
  FlightTotals totals;
  std::vector<float> passMicroseconds;
};

void RunFrame(int frame, double rate, FlightUnderWay& flight) {
  const int reloadsBefore = CountReloads();
  flight.runner.CarryOutSteps(frame);
  FlyFrame(frame, rate, flight.passMicroseconds);
  if (CountReloads() != reloadsBefore)
    flight.narrator.Tell(frame, "all plugins reloaded: " + DescribeDifference(ListPlugins(), {}));
  TellNews(frame, flight.narrator);
  flight.runner.CheckExpectations(frame);
  ++flight.totals.frames;
}

void RunFrames(const FlightOptions& options, FlightUnderWay& flight) {
  const auto start = std::chrono::steady_clock::now();
  for (int frame = 1; frame <= options.frames; ++frame) {
    RunFrame(frame, options.rate, flight);
    flight.narrator.ShowProgress(frame, options.frames);
    if (options.realTime)
      std::this_thread::sleep_until(start + std::chrono::duration<double>(frame / options.rate));
  }
  flight.narrator.ClearProgress();
  flight.runner.CheckExpectations(kAtEnd);
}

// Runs a part of the flight and says whether it came to its end. An exception of a plugin is reported here
// and now, while the module that threw it is still open.
template <class Part>
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

std::vector<PluginReport> ReportPlugins() {
  std::vector<PluginReport> reports;
  for (const PluginInfo& plugin : ListPlugins()) {
    if (plugin.id == VYRA_HOST_PLUGIN) continue;
    PluginReport report;
    report.id = plugin.id;
    report.signature = plugin.signature;
    report.name = plugin.name;
    report.path = plugin.path;
    report.state = plugin.enabled ? "enabled" : "disabled";
    reports.push_back(std::move(report));
  }
  return reports;
}

// From the library's start to its shutdown.
bool FlyToTheEnd(const FlightOptions& options, FlightUnderWay& flight, Report& report) {
  VYRAHostServices services = MakeHostServices();
  const bool flown = CameToItsEnd(flight.narrator, [&] {
    VYRAInitializePlugins(gWorld.systemPath.c_str(), &services, nullptr);
    fmt::print("{:<12}{}: {}\n", "start", gWorld.systemPath, DescribeDifference(ListPlugins(), {}));
    StartAiPlanes();
    RunFrames(options, flight);
  });
  report.plugins = ReportPlugins();
  flight.totals.passes = VYRAGetCycleNumber();
  const bool shutDown = CameToItsEnd(flight.narrator, VYRAShutdownPlugins);
  FinishAllLoads();
  WatchAiPlanes();
  TellNews(kAfterShutdown, flight.narrator);
  if (flown && shutDown) flight.runner.CheckExpectations(kAfterShutdown);
  return flown && shutDown;
}

bool EverythingExpectedHappened(const Report& report) {
  return report.failedSteps.empty() &&
         std::ranges::all_of(report.expectations, [](const ExpectationReport& expectation) {
           return expectation.result == ExpectationResult::Held;
         });
}

}  // namespace

bool Fly(const FlightOptions& options) {
  gWorld.systemPath = NormalSystemPath(options.systemPath);
  Flight flight;
  if (!options.flightFile.empty()) flight = ReadFlight(options.flightFile, gWorld.systemPath, options.frames);
  Log log(options.logFile);
  gLog = &log;
  // On the terminal, progress between lines of the log would tear both.
  Narrator narrator(!options.logFile.empty());
  Report report;
  report.rate = options.rate;
  FlightUnderWay underWay{.runner = FlightRunner(std::move(flight), log, narrator, report),
                          .narrator = narrator,
                          .totals = {},
                          .passMicroseconds = {}};
  underWay.passMicroseconds.reserve(2 * static_cast<std::size_t>(options.frames));

  RegisterSimulatorDataRefs();
  PublishPlaneSwitches();
  const bool completed = FlyToTheEnd(options, underWay, report);
  underWay.totals.warnings = log.CountWarnings();
  underWay.totals.activity = gActivity;
  EnterPassTimes(underWay.totals, underWay.passMicroseconds);
  report.totals = underWay.totals;
  PrintSummary(report);
  if (!log.Close()) throw InputError("not all of the log could be written to " + options.logFile);
  return completed && EverythingExpectedHappened(report);
}

}  // namespace sim
