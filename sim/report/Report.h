// What came of a flight: everything that the summary prints and the files of --report and --junit hold.
//
// The contract between those who fill it and those who write it:
//  - One process owns the report and writes it. Before the flight it enters what is known: the expectations,
//    all as "not reached".
//  - Whatever happens in flight is an event (report/Event.h), told with TellEvent as it happens. An event
//    is one line of JSON on its way between processes, and changes the report through ApplyEvent. So a flight
//    that ends badly leaves a report of all that was told before.
//  - SettleReport comes last, when no event can follow: it settles the result and the exit code.
//  - A plugin is known by the path of its module, as two may claim one signature and IDs are used again.
//  - Times are milliseconds of wall time. Frames count from 1; 0 is before the first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "report/Activity.h"

namespace sim {

// What became of the flight, from the best to the worst.
enum class Result { Passed, Failed, Exited, Exception, Stalled, Crashed };

constexpr int kExitPassed = 0;
constexpr int kExitFailed = 1;      // an expectation, a step, a load, or no plugin at all
constexpr int kExitWrongInput = 2;  // or wrong usage: there was no flight
constexpr int kExitPluginEndedFlight = 3;

// The plugin that ended the flight.
struct Culprit {
  std::string signature;
  std::string name;
  std::string path;  // of its module
  std::string call;  // the kind of call that it was in, as in "flight loop"
  int frame = 0;
  std::string hook;     // the simulator's call into the library, as in "VYRADoDrawingHook(20, 0)"
  std::string message;  // one line: what happened
  std::vector<std::string> backtrace;
};

// What calls cost: of one kind, or of all together. Times are a plugin's own, per frame, over all frames in
// which it was there; those of opening, start, enable, disable, stop and closing are per call, and are not
// among those of all together.
struct CallCost {
  std::int64_t calls = 0;
  double totalMs = 0.0;  // in the whole flight, outside of frames too
  double meanMs = 0.0;
  double medianMs = 0.0;
  double p99Ms = 0.0;
  double longestMs = 0.0;
  int longestFrame = 0;
  bool isPerCall = false;  // for the table alone
};

struct PluginCost {
  CallCost total;
  std::map<std::string, CallCost> kinds;  // by the name of the kind of call
};

// A plugin that started, or that was passed over.
struct PluginReport {
  int id = 0;             // the last one that it had
  std::string signature;  // empty when it is not known: of some that are passed over
  std::string name;
  std::string path;
  std::string state;               // "enabled", "disabled", "unloaded" or "passed over"
  double loadMs = 0.0;             // of its last loading: opening, start and enable
  std::optional<PluginCost> cost;  // when costs were asked for
};

struct LoadFailure {
  std::string path;
  std::string reason;  // in words
};

enum class ExpectationResult { Held, Failed, NotReached };

struct ExpectationReport {
  std::string text;  // "plugin org.skyvora.clock is enabled"
  int line = 0;      // in the flight file
  ExpectationResult result = ExpectationResult::NotReached;
  std::string found;  // empty when it was not reached
  int lastHeld = 0;   // of one that failed: the last frame after which it would have held; 0 for none
};

struct FailedStep {
  int frame = 0;
  int line = 0;  // in the flight file
  std::string text;
};

// How far the flight came, and what it was like. Not known of a flight whose process ended before it.
struct FlightTotals {
  int frames = 0;
  int passes = 0;    // as the library counted them
  int warnings = 0;  // in the log, the shutdown included
  float medianPassMicroseconds = 0.0F;
  float p99PassMicroseconds = 0.0F;
  float longestPassMicroseconds = 0.0F;
  double timesRealTime = 0.0;   // simulated seconds of frames in a second of wall time
  double libraryShare = 0.0;    // of a frame's wall time, from 0 to 1, that of the plugins included
  int shownFrames = 0;          // in a window
  double shownPerSecond = 0.0;  // of wall time, from the first frame to the last
  Activity activity;
};

struct Report {
  Result result = Result::Passed;
  int exitCode = kExitPassed;
  std::optional<Culprit> culprit;
  std::vector<PluginReport> plugins;  // in the order in which they were first met
  std::vector<LoadFailure> loadFailures;
  std::vector<ExpectationReport> expectations;  // in the order of the flight file
  std::vector<FailedStep> failedSteps;
  std::vector<std::string> otherFailures;    // one line each, as of a plugin that costs more than it may
  std::size_t expectedLoadFailures = 0;      // of those that came first
  std::vector<std::string> foldersLookedAt;  // for plugins
  double rate = 0.0;                         // frames per simulated second
  std::optional<FlightTotals> totals;
  std::int64_t callsIntoOthers = 0;  // into modules that did not start, for the table of costs alone
  std::optional<CallCost> frames;    // whole ones, when costs were asked for; `calls` is their number
};

// Whether any plugin was loaded in the whole flight.
bool HasPlugins(const Report& report);

// Settles the result and the exit code from all else.
void SettleReport(Report& report);

// Why the flight did not pass, a line each; empty when it did.
std::vector<std::string> WhyNotPassed(const Report& report);

// "passed", "crashed" and so on, and "held", "failed" or "not reached".
const char* Name(Result result);
const char* Name(ExpectationResult result);

}  // namespace sim
