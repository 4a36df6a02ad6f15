// Reading a flight file.
#include "flight/Flight.h"

#include <fmt/format.h>

#include <algorithm>

#include "flight/JsonDocument.h"
#include "flight/Nearest.h"
#include "report/Moment.h"

namespace sim {
namespace {

const std::vector<std::string_view> kTopLevelKeys = {"$schema", "steps", "expectations"};

int FrameOf(const Entry& entry, const FlightContext& context) {
  const int frame = entry.WholeNumber("frame");
  if (frame > context.frames)
    entry.FailAtValue("frame",
                      fmt::format("frame {} lies behind the flight's last, {}", frame, context.frames));
  return frame;
}

int MomentOf(const Entry& entry, const FlightContext& context) {
  if (entry.Has("frame") == entry.Has("after"))
    entry.Fail("an expectation needs either \"frame\" or \"after\"");
  if (entry.Has("frame")) return FrameOf(entry, context);
  const std::string after = entry.Text("after");
  if (after == "start") return kAfterStart;
  return after == "end" ? kAtEnd : kAfterShutdown;
}

void CheckTopLevel(const Entry& file) {
  for (const std::string_view key : file.Keys())
    if (std::ranges::find(kTopLevelKeys, key) == kTopLevelKeys.end())
      file.FailAtKey(key, fmt::format("unknown key \"{}\"{}", key, DidYouMean(key, kTopLevelKeys)));
}

}  // namespace

Flight ReadFlight(const std::string& fileName, const FlightContext& context) {
  const JsonDocument document(fileName);
  const Entry file(document, "", "");
  CheckTopLevel(file);
  Flight flight;
  for (const Entry& entry : file.Elements("steps")) {
    const StepWord& step = FindStep(entry);
    flight.steps.push_back({FrameOf(entry, context), entry.Line(), step.read(entry, context)});
  }
  for (const Entry& entry : file.Elements("expectations")) {
    const ExpectationWord& expectation = FindExpectation(entry);
    flight.expectations.push_back({MomentOf(entry, context), entry.Line(), flight.expectations.size(),
                                   expectation.read(entry, context)});
  }
  std::ranges::stable_sort(flight.steps, {}, &Step::frame);
  std::ranges::stable_sort(flight.expectations, {}, &Expectation::moment);
  return flight;
}

}  // namespace sim
