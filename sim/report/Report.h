// What came of a flight: everything that the summary prints and the files of --report and --junit hold.
//
// The contract between those who fill it and those who write it:
//  - One process owns the report and writes it. Before the flight it enters what is known: the expectations,
//    all as "not reached", and what is passed over.
//  - Whatever happens in flight is an Event (report/Event.h), told to the owner when it happens. An event
//    changes the report through ApplyEvent, and is one line of JSON on its way between processes, so that a
//    flight that ends badly leaves a report of all that was told before.
//  - Settle comes last, when no event can follow: it settles the result and the exit code.
//  - A plugin is known by its path: two plugins may claim one signature, and IDs are used again.
//  - Times are milliseconds of wall time. Frames count from 1; 0 is before the first.
#pragma once

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

// What calls cost: of one kind, or of all together.
struct CallCost {
  std::int64_t calls = 0;
  double meanMs = 0.0;  // per frame, as are the others
  double medianMs = 0.0;
  double p99Ms = 0.0;
  double longestMs = 0.0;
  int longestFrame = 0;
};

struct PluginCost {
  CallCost total;
  std::map<std::string, CallCost> kinds;  // by the name of the kind of call
};

struct PluginReport {
  int id = 0;             // the last one that it had; 0 is the simulator, which no report lists
  std::string signature;  // empty until it has named itself
  std::string name;
  std::string path;   // of its module
  std::string state;  // "enabled", "disabled", "unloaded", "refused", "passed over"
  double loadMs = 0.0;
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
};

struct FailedStep {
  int frame = 0;
  int line = 0;  // in the flight file
  std::string text;
};

// How far the flight came, and what it was like. Known only when it came to its end in order.
struct FlightTotals {
  int frames = 0;
  int passes = 0;    // as the library counted them
  int warnings = 0;  // in the log, the shutdown included
  float medianPassMicroseconds = 0.0F;
  float p99PassMicroseconds = 0.0F;
  float longestPassMicroseconds = 0.0F;
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
  double rate = 0.0;  // frames per simulated second
  std::optional<FlightTotals> totals;
};

}  // namespace sim
