#include "Run.h"

#include <fmt/core.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <utility>

#include "InputError.h"
#include "Session.h"
#include "flight/FlightKeys.h"
#include "report/Clock.h"
#include "report/CostRecord.h"
#include "report/Costs.h"
#include "report/EndText.h"
#include "report/Event.h"
#include "report/JUnit.h"
#include "report/LastEnd.h"
#include "report/Log.h"
#include "report/Moment.h"
#include "report/ReportJson.h"
#include "report/Summary.h"
#include "supervise/Supervisor.h"
#include "supervise/Unsupervised.h"
#include "view/Fonts.h"
#include "view/Screen.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr std::size_t kPathBuffer = 512;  // as the library reads the system path, with room for a file name
constexpr std::size_t kFileNameRoom = 32;
constexpr double kWindowRate = 60.0;
constexpr int kExitStartsOver = 4;  // of a flight's process
constexpr int kExitNotFlown = 5;    // likewise

int ExitCodeOf(FlightOutcome outcome) {
  switch (outcome) {
    case FlightOutcome::Ended:
      break;
    case FlightOutcome::StartsOver:
      return kExitStartsOver;
    case FlightOutcome::NotFlown:
      return kExitNotFlown;
  }
  return kExitPassed;
}

std::string NormalSystemPath(const std::string& folder) {
  if (!std::filesystem::is_directory(folder)) throw InputError("there is no simulator folder " + folder);
  std::string path = std::filesystem::absolute(folder).lexically_normal().string();
  if (!path.ends_with('/')) path += '/';
  if (path.size() + kFileNameRoom > kPathBuffer) throw InputError("the path is too long: " + path);
  return path;
}

// A file that cannot be written is told of before the flight, not after it.
void CheckWritable(const std::string& fileName) {
  if (!fileName.empty() && !std::ofstream(fileName, std::ios::app))
    throw InputError("cannot write " + fileName);
}

Report EmptyReport(const FlightOptions& options, const Flight& flight) {
  Report report;
  report.rate = options.rate;
  report.expectations.resize(flight.expectations.size());
  for (const Expectation& expectation : flight.expectations) {
    ExpectationReport& entry = report.expectations[expectation.index];
    entry.text = expectation.claim.text;
    entry.line = expectation.line;
  }
  return report;
}

// ---- Flying -------------------------------------------------------------------------------------------

// A flight that ended badly, other than by an exception, of which the flight itself has told.
void EnterBadEnd(const BadEnd& end, Report& report) {
  fmt::print("{:<12}{}\n", MomentOf(end.culprit), DescribeEnd(end.result, end.culprit));
  if (end.hasCulprit) return ApplyEvent(report, PluginEndedFlight{end.result, end.culprit});
  if (!report.culprit) report.result = end.result;
  report.otherFailures.push_back(end.culprit.message);
}

// In a process of its own.
FlightEnd FlySupervised(const FlightOptions& options, Flight& flight, Log& log, CostRecord& costs,
                        Report& report) {
  const auto fly = [&](int lines) {
    try {
      TellEventsTo(lines);
      return ExitCodeOf(Fly(options, std::move(flight), log, costs));
    } catch (const std::exception& error) {
      fmt::print(stderr, "vyra-sim: {}\n", error.what());
      return kExitWrongInput;
    }
  };
  const auto takeLine = [&](std::string_view line) { ApplyEvent(report, EventFromLine(line)); };
  FlightEnd end = Supervise({Seconds(options.stallLimit), options.wantsCore}, fly, takeLine);
  if (end.badEnd) costs.CutShort(end.noticed);
  if (end.badEnd && end.signal != SIGPIPE) EnterBadEnd(*end.badEnd, report);
  if (end.exitCode != kExitPassed && end.exitCode != kExitStartsOver && end.exitCode != kExitNotFlown)
    report.otherFailures.push_back(fmt::format("the flight's process ended with exit code {}", end.exitCode));
  return end;
}

void Conclude(const FlightOptions& options, const CostRecord& costs, Report& report) {
  costs.EnterIn(report);
  SettleReport(report);
  PrintSummary(report);
  if (options.costs.wantsTable) PrintCosts(report);
  if (!options.reportFile.empty()) WriteReport(report, options.reportFile);
  if (!options.junitFile.empty()) WriteJUnit(report, options.junitFile);
  const bool isRemembered =
      !report.culprit || RememberEnd(options.stateFolder, gWorld.systemPath, report.result, *report.culprit);
  if (!isRemembered)
    fmt::print(stderr, "vyra-sim: cannot remember in {} how the flight ended\n", options.stateFolder);
}

// In this process. A plugin that exits it is told of on the way out.
FlightEnd FlyUnsupervised(const FlightOptions& options, Flight& flight, Log& log, CostRecord& costs,
                          Report& report) {
  static const FlightOptions* theOptions = &options;
  static CostRecord* theCosts = &costs;
  static Report* theReport = &report;
  TellEventsTo(report);
  FlightEnd flightEnd;
  FlyHere([&] { flightEnd.exitCode = ExitCodeOf(Fly(options, std::move(flight), log, costs)); },
          [](const BadEnd& end) {
            theCosts->CutShort(ReadClock());
            EnterBadEnd(end, *theReport);
            Conclude(*theOptions, *theCosts, *theReport);
          });
  return flightEnd;
}

// Nothing was flown, so what ended the flight before is still to be told next time.
int Leave(const FlightOptions& options) {
  RememberAgain(options.stateFolder, gWorld.systemPath, *options.lastEnd);
  return kExitPassed;
}

}  // namespace

void CompleteFromFlightFile(FlightOptions& options) {
  if (!options.flightFile.empty()) {
    const FlightSettings settings = ReadFlightSettings(options.flightFile);
    if (options.systemPath.empty()) options.systemPath = settings.systemPath;
    if (options.frames == 0) options.frames = settings.frames;
    if (options.rate == 0.0) options.rate = settings.rate;
    if (options.plugins.only.empty() && !options.plugins.safeMode) options.plugins.only = settings.plugins;
  }
  if (options.hasWindow) {
    if (options.frames == 0) options.frames = kMaxFrames;
    if (options.rate == 0.0) options.rate = kWindowRate;
  }
  const char* const missing = options.systemPath.empty() ? "system"
                              : options.frames == 0      ? "frames"
                              : options.rate == 0.0      ? "rate"
                                                         : nullptr;
  if (missing != nullptr)
    throw InputError(fmt::format("--{0} is needed, or \"{0}\" in a flight file", missing));
}

int Run(FlightOptions options) {
  gWorld.systemPath = NormalSystemPath(options.systemPath);
  gScreen.Resize(options.pictures.width, options.pictures.height);
  FontOf(0);  // a font that is missing is told of now
  Flight flight;
  if (!options.flightFile.empty())
    flight = ReadFlight(options.flightFile, {gWorld.systemPath, options.frames, options.rate});
  for (const PictureRequest& picture : options.pictures.requests) {
    if (picture.frame > options.frames)
      throw InputError(
          fmt::format("there is no frame {} for the picture {}", picture.frame, picture.fileName));
    CheckWritable(picture.fileName);
  }
  CheckWritable(options.reportFile);
  CheckWritable(options.junitFile);
  Log log(options.logFile);
  const bool isSupervised = options.isSupervised && !IsTraced();
  if (options.onChange == OnChange::StartOver && !isSupervised)
    throw InputError("--watch=restart needs a process for each flight: not --no-supervisor, and no debugger");

  options.lastEnd = TakeLastEnd(options.stateFolder, gWorld.systemPath);
  if (options.lastEnd)
    fmt::print("{:<12}{}\n", "before", DescribeLastEnd(*options.lastEnd, gWorld.systemPath));

  std::optional<CostRecord> costs;
  Report report;
  FlightEnd end;
  do {
    costs.emplace(options.costs, !options.reportFile.empty() || flight.NeedsCosts());
    report = EmptyReport(options, flight);
    if (isSupervised)
      end = FlySupervised(options, flight, log, *costs, report);
    else
      end = FlyUnsupervised(options, flight, log, *costs, report);
    if (end.exitCode == kExitNotFlown) return Leave(options);
    options.lastEnd.reset();  // the user is asked once
  } while (end.exitCode == kExitStartsOver);
  if (end.signal == SIGPIPE) DieOf(SIGPIPE);                    // nobody reads any more
  if (end.exitCode == kExitWrongInput) return kExitWrongInput;  // which the flight has told of
  Conclude(options, *costs, report);
  if (options.wantsCore && end.signal != 0) DieOf(end.signal);
  return report.exitCode;
}

}  // namespace sim
