// A flight from its start to its end. The order of a frame stands in host/Frame.cpp.
#include "Session.h"

#include <fmt/format.h>

#include <chrono>
#include <cstring>
#include <optional>
#include <thread>

#include "VYRAHost.h"
#include "VYRAProcessing.h"
#include "flight/FlightRunner.h"
#include "host/CostWatch.h"
#include "host/FlightBoard.h"
#include "host/Frame.h"
#include "host/LoadWatch.h"
#include "host/ObjectServices.h"
#include "host/OwnDataRefs.h"
#include "host/PlaneServices.h"
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
#include "supervise/ThrowNotes.h"
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
};

void RunFrame(int frame, double rate, FlightUnderWay& flight) {
  const int reloadsBefore = CountReloads();
  gBoard->frame = frame;
  {
    const MeasuredFrame measured(frame);
    flight.runner.CarryOutSteps(frame);
    FlyFrame(frame, rate, flight.passes);
  }
  if (CountReloads() != reloadsBefore) {
    EndReload();
    flight.narrator.Tell(frame, "all plugins reloaded: " + DescribeDifference(ListPlugins(), {}));
  }
  TellNews(frame, flight.narrator);
  flight.runner.CheckExpectations(frame);
  ++flight.totals.frames;
}

void RunFrames(const FlightOptions& options, FlightUnderWay& flight) {
  const auto start = std::chrono::steady_clock::now();
  for (int frame = 1; frame <= options.frames; ++frame) {
    if (const int signal = EndRequestedBy(); signal != 0) {
      flight.narrator.Tell(frame, fmt::format("SIG{} asks for the end of the flight", sigabbrev_np(signal)));
      return;
    }
    RunFrame(frame, options.rate, flight);
    flight.narrator.ShowProgress(frame, options.frames);
    if (options.realTime)
      std::this_thread::sleep_until(start + std::chrono::duration<double>(frame / options.rate));
  }
  flight.narrator.ClearProgress();
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
  const bool flown = CameToItsEnd(flight.narrator, [&] {
    Start(services);
    fmt::print("{:<12}{}: {}\n", "start", gWorld.systemPath, DescribeDifference(ListPlugins(), {}));
    StartAiPlanes();
    flight.runner.CheckExpectations(kAfterStart);
    RunFrames(options, flight);
  });
  EndReload();
  TellPluginStates();
  flight.totals.passes = VYRAGetCycleNumber();
  const bool shutDown =
      CameToItsEnd(flight.narrator, [] { CallHook("VYRAShutdownPlugins", VYRAShutdownPlugins); });
  FinishAllLoads();
  WatchAiPlanes();
  TellNews(kAfterShutdown, flight.narrator);
  if (flown && shutDown) flight.runner.CheckExpectations(kAfterShutdown);
}

}  // namespace

void Fly(const FlightOptions& options, Flight plan, Log& log, CostRecord& costs) {
  gLog = &log;
  // On the terminal, progress between lines of the log would tear both.
  Narrator narrator(!options.logFile.empty());
  FlightUnderWay flight{
      .runner = FlightRunner(std::move(plan), narrator), .narrator = narrator, .totals = {}, .passes = {}};
  if (costs.IsMeasuring()) StartMeasuring(costs.Block(), costs.Trace());

  RegisterSimulatorDataRefs();
  PublishPlaneSwitches();
  FlyToTheEnd(options, flight);
  StopMeasuring();
  flight.totals.warnings = log.CountWarnings();
  flight.totals.activity = gActivity;
  EnterPassTimes(flight.totals, flight.passes);
  if (!log.Close()) TellEvent(FlightFailed{"not all of the log could be written to " + options.logFile});
  TellEvent(FlightEnded{flight.totals});
}

}  // namespace sim
