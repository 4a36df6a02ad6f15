// A flight from its start to its end. The order of a frame stands in host/Frame.cpp.
#include "Session.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "VYRAHost.h"
#include "VYRAProcessing.h"
#include "flight/FlightRunner.h"
#include "host/CallCounts.h"
#include "host/CostWatch.h"
#include "host/FlightBoard.h"
#include "host/Frame.h"
#include "host/FrameParts.h"
#include "host/HookTimes.h"
#include "host/LoadWatch.h"
#include "host/ModuleChanges.h"
#include "host/ObjectServices.h"
#include "host/OwnDataRefs.h"
#include "host/Pictures.h"
#include "host/PlaneServices.h"
#include "host/PluginChoice.h"
#include "host/PluginList.h"
#include "host/ServiceTable.h"
#include "host/SystemServices.h"
#include "report/CostRecord.h"
#include "report/EndText.h"
#include "report/Event.h"
#include "report/Log.h"
#include "report/Moment.h"
#include "report/Narrator.h"
#include "report/News.h"
#include "report/Summary.h"
#include "supervise/EndRequest.h"
#include "supervise/KeptModules.h"
#include "supervise/ThrowNotes.h"
#include "window/Dialogs.h"
#include "window/FlightWindow.h"
#include "window/Recording.h"
#include "window/UserActions.h"
#include "window/WindowTimes.h"
#include "world/World.h"

namespace sim {
namespace {

void TellNews(int moment, Narrator& narrator) {
  for (const std::string& text : gNews) narrator.Tell(moment, text);
  gNews.clear();
}

// A flight that is under way.
struct FlightUnderWay {
  FlightRunner runner;
  Narrator& narrator;
  FlightTotals totals;
  Histogram passes;
  std::optional<ModuleChanges> changes{};  // while modules are watched
  std::string whyReloaded{};
  bool startsOver = false;
  FlightWindow* window = nullptr;  // while it is flown by hand
};

// ---- Modules that change --------------------------------------------------------------------------------

void WatchModules(FlightUnderWay& flight) {
  static std::size_t known = 0;
  if (!flight.changes || known == CountMetModules()) return;
  known = CountMetModules();
  flight.changes->Watch(MetModules());
}

// Between frames. False when the flight is to end here and start over.
bool TakeChanges(int frame, OnChange onChange, FlightUnderWay& flight) {
  if (!flight.changes) return true;
  std::vector<std::string> changed = flight.changes->Take();
  if (changed.empty()) return true;
  for (std::string& module : changed)
    if (module.starts_with(gWorld.systemPath)) module.erase(0, gWorld.systemPath.size());
  const std::string what = fmt::format("{} changed", fmt::join(changed, ", "));
  if (onChange == OnChange::StartOver) {
    flight.narrator.Tell(frame, what + ": the flight starts over");
    flight.startsOver = true;
    return false;
  }
  flight.whyReloaded = ", as " + what;
  VYRAReloadPlugins();
  return true;
}

// A folder that was made anew is watched no more.
void TellReload(int frame, FlightUnderWay& flight) {
  EndReload();
  if (flight.changes) flight.changes->Watch(MetModules());
  flight.narrator.Tell(frame, fmt::format("all plugins reloaded{}: {}", std::exchange(flight.whyReloaded, ""),
                                          DescribeDifference(ListPlugins(), {})));
}

// ---- Frames ---------------------------------------------------------------------------------------------

void RunFrame(int frame, double rate, FlightUnderWay& flight) {
  const int reloadsBefore = CountReloads();
  gBoard->frame = frame;
  {
    const FrameSample sample(frame);
    const MeasuredFrame measured(frame);
    BeginPart(FramePart::Steps);
    flight.runner.CarryOutSteps(frame);
    if (flight.window != nullptr) CarryOutUserActions(frame, flight.narrator);
    FlyFrame(frame, rate, flight.passes);
  }
  if (CountReloads() != reloadsBefore) TellReload(frame, flight);
  WatchModules(flight);
  TellNews(frame, flight.narrator);
  flight.runner.CheckExpectations(frame);
  ++flight.totals.frames;
}

void EnterSpeed(Nanoseconds wallTime, double rate, FlightTotals& totals) {
  const auto seconds = static_cast<double>(std::max<Nanoseconds>(wallTime, 1)) / 1e9;
  totals.timesRealTime = totals.frames / rate / seconds;
  if (gHookTimes.inFrames == 0) return;
  totals.libraryShare = static_cast<double>(gHookTimes.inLibrary) / static_cast<double>(gHookTimes.inFrames);
}

void EnterShownFrames(Nanoseconds wallTime, FlightTotals& totals) {
  totals.shownFrames = gWindowTimes.shownFrames;
  totals.shownPerSecond =
      totals.shownFrames / (static_cast<double>(std::max<Nanoseconds>(wallTime, 1)) / 1e9);
}

void RunFrames(const FlightOptions& options, FlightUnderWay& flight) {
  const auto start = std::chrono::steady_clock::now();
  int frame = 1;
  for (; frame <= options.frames; ++frame) {
    if (const int signal = EndRequestedBy(); signal != 0) {
      flight.narrator.Tell(frame, fmt::format("SIG{} asks for the end of the flight", sigabbrev_np(signal)));
      return;
    }
    if (!TakeChanges(frame, options.onChange, flight)) return;
    if (flight.window != nullptr && !flight.window->BeginFrame()) {
      flight.narrator.Tell(frame, "the window was closed");
      break;
    }
    RunFrame(frame, options.rate, flight);
    if (flight.window != nullptr) flight.window->EndFrame();
    flight.narrator.ShowProgress(frame, options.frames);
    if (options.realTime && flight.window == nullptr)
      std::this_thread::sleep_until(start + std::chrono::duration<double>(frame / options.rate));
  }
  flight.narrator.ClearProgress();
  flight.runner.EndSteps(frame - 1);
  flight.runner.CheckExpectations(kAtEnd);
}

// Runs a part of the flight and says whether it came to its end. An exception of a plugin is told of here and
// now, while the module that threw it is still open.
template <class Part>
bool CameToItsEnd(Narrator& narrator, const Part& part) {
  try {
    part();
    return true;
  } catch (...) {
    const std::optional<Culprit> culprit = CulpritOfException();
    if (!culprit) throw;  // it is the simulator's own
    narrator.Tell(gWorld.frame, DescribeEnd(Result::Exception, *culprit));
    TellEvent(PluginEndedFlight{.result = Result::Exception, .culprit = *culprit});
    return false;
  }
}

void Start(VYRAHostServices& services) {
  const LoadRound round;
  CallHook("VYRAInitializePlugins", VYRAInitializePlugins, gWorld.systemPath.c_str(), &services, nullptr);
  round.AuditMainFolder();
}

// From the library's start to its shutdown.
void FlyToTheEnd(const FlightOptions& options, FlightUnderWay& flight) {
  VYRAHostServices services = MakeHostServices();
  Nanoseconds begin = ReadClock();
  const bool flown = CameToItsEnd(flight.narrator, [&] {
    Start(services);
    fmt::print("{:<12}{}: {}\n", "start", gWorld.systemPath, DescribeDifference(ListPlugins(), {}));
    WatchModules(flight);
    StartAiPlanes();
    flight.runner.CheckExpectations(kAfterStart);
    begin = ReadClock();
    RunFrames(options, flight);
    if (options.atTheEnd) options.atTheEnd();
  });
  const Nanoseconds wallTime = ReadClock() - begin;
  EnterSpeed(wallTime, options.rate, flight.totals);
  if (flight.window != nullptr) EnterShownFrames(wallTime, flight.totals);
  EndReload();
  TellPluginStates();
  flight.totals.passes = VYRAGetCycleNumber();
  if (options.keepsModules) KeepModules();
  const bool shutDown =
      CameToItsEnd(flight.narrator, [] { CallHook("VYRAShutdownPlugins", VYRAShutdownPlugins); });
  FinishAllLoads();
  WatchAiPlanes();
  TellNews(kAfterShutdown, flight.narrator);
  if (flown && shutDown) flight.runner.CheckExpectations(kAfterShutdown);
}

// A context is made, and costs its time, only for those who look at what is drawn.
bool WantsOpenGl(const PictureOptions& pictures) {
  return pictures.wantsContext || !pictures.requests.empty() || gFlightWantsPictures;
}

// ---- The window -----------------------------------------------------------------------------------------

// What the library says is shown for as long as this lasts. A message waits for the user who asked for a
// reload; a flight file and a module that changed ask without one.
class StUserDisplay {
 public:
  StUserDisplay(FlightWindow& window, const FlightOptions& options, const FlightUnderWay& flight) {
    gUserDisplay.showStatus = [&window](const std::string& text) { ShowStatus(window, text); };
    gUserDisplay.showMessage = [&](std::span<const std::string> lines) {
      ShowMessage(window, lines, options.flightFile.empty() && flight.whyReloaded.empty());
    };
  }
  ~StUserDisplay() { gUserDisplay = {}; }
  StUserDisplay(const StUserDisplay&) = delete;
  StUserDisplay& operator=(const StUserDisplay&) = delete;
};

// The plugins to fly with, where the user may leave out the one that ended the last flight. None when there
// is to be no flight.
std::optional<PluginChoice> ChoosePlugins(const FlightOptions& options, FlightWindow* window) {
  PluginChoice choice = options.plugins;
  if (window == nullptr || !options.lastEnd || PassesOver(choice, options.lastEnd->path)) return choice;
  switch (AskAboutLastEnd(*window, *options.lastEnd)) {
    case LastEndChoice::Leave:
      return std::nullopt;
    case LastEndChoice::FlyWithout:
      choice.skip.push_back(PatternOf(*options.lastEnd, gWorld.systemPath));
      break;
    case LastEndChoice::FlyWithAll:
      break;
  }
  return choice;
}

}  // namespace

FlightOutcome Fly(const FlightOptions& options, Flight plan, Log& log, CostRecord& costs) {
  gLog = &log;
  // On the terminal, progress between lines of the log would tear both.
  Narrator narrator(!options.logFile.empty());
  FlightUnderWay flight{.runner = FlightRunner(std::move(plan), narrator),
                        .narrator = narrator,
                        .totals = {},
                        .passes = {},
                        .changes = {},
                        .whyReloaded = {}};
  if (options.onChange != OnChange::Nothing) flight.changes.emplace();
  StartCallCounts();
  if (costs.IsMeasuring()) StartMeasuring(costs.Block(), costs.Trace());

  for (const std::string& problem : gWorld.Open(gWorld.systemPath))
    log.Write(fmt::format("Failed: {}\n", problem));
  RegisterSimulatorDataRefs();
  {
    std::optional<FlightWindow> window;
    std::optional<StUserDisplay> display;
    if (options.hasWindow) {
      flight.window = &window.emplace(options.rate, options.stateFolder);
      display.emplace(*window, options, flight);
      BeginUserActions({gWorld.systemPath, options.frames, options.rate});
      gRecording.Begin({gWorld.systemPath, options.rate, options.plugins.only});
    }
    const std::optional<PluginChoice> choice = ChoosePlugins(options, flight.window);
    if (!choice) return FlightOutcome::NotFlown;
    FlyWith(*choice);
    std::optional<Pictures> pictures;
    if (window || WantsOpenGl(options.pictures)) pictures.emplace(options.pictures, options.hasWindow);
    FlyToTheEnd(options, flight);
  }
  StopMeasuring();
  flight.totals.warnings = log.CountWarnings();
  flight.totals.activity = gActivity;
  EnterPassTimes(flight.totals, flight.passes);
  if (!log.Close()) TellEvent(FlightFailed{"not all of the log could be written to " + options.logFile});
  TellEvent(FlightEnded{flight.totals});
  return flight.startsOver ? FlightOutcome::StartsOver : FlightOutcome::Ended;
}

}  // namespace sim
