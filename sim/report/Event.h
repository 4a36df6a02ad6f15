// What happens in a flight, as it is told to the process that owns the report. Each event has what the report
// needs, so that nothing else has to come through. A new kind of event is a struct here with its name, a row
// of Event, and what it does in ApplyEvent.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "report/Report.h"

namespace sim {

// A plugin was loaded, or something about it changed. Told again, it takes the place of what was told before
// of the same path, but for the cost.
struct PluginTold {
  static constexpr const char* kName = "plugin";
  PluginReport plugin;
};
// What a plugin cost in the whole flight.
struct CostTold {
  static constexpr const char* kName = "cost";
  std::string path;
  PluginCost cost;
};
struct LoadFailed {
  static constexpr const char* kName = "load failure";
  LoadFailure failure;
};
struct FolderLookedAt {
  static constexpr const char* kName = "folder";
  std::string folder;
};
struct StepFailed {
  static constexpr const char* kName = "failed step";
  FailedStep step;
};
struct ExpectationSettled {
  static constexpr const char* kName = "expectation";
  std::size_t index;  // in the order of the flight file
  bool holds;
  std::string found;
  int lastHeld;             // the frame, when it does not hold now; 0 for none
  bool coversLoadFailures;  // it expected those that were told before, and no others
};
// Something else that fails the flight, in one line.
struct FlightFailed {
  static constexpr const char* kName = "failure";
  std::string text;
};
// A plugin ended the flight. The first one told is the one that counts.
struct PluginEndedFlight {
  static constexpr const char* kName = "end by a plugin";
  Result result;
  Culprit culprit;
};
// The flight is over, and the process still stands.
struct FlightEnded {
  static constexpr const char* kName = "end";
  FlightTotals totals;
};

using Event = std::variant<PluginTold, CostTold, LoadFailed, FolderLookedAt, StepFailed, ExpectationSettled,
                           FlightFailed, PluginEndedFlight, FlightEnded>;

void ApplyEvent(Report& report, const Event& event);

// One line of JSON with its line end, and back. Bytes that are not UTF-8 become replacement characters.
// EventFromLine throws std::runtime_error for a line that is none.
std::string EventToLine(const Event& event);
Event EventFromLine(std::string_view line);

// Who is told: the report itself, or whoever reads the other end of a file descriptor, line by line. One of
// the two is to be called before the first event.
void TellEventsTo(Report& report);
void TellEventsTo(int fileDescriptor);

// Tells an event. Main thread only, and not from a signal handler. Nothing happens when the reader is gone.
void TellEvent(const Event& event);

}  // namespace sim
