// Reading a flight file.
#include "flight/Flight.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>

#include "flight/FlightKeys.h"
#include "flight/JsonDocument.h"
#include "flight/Nearest.h"
#include "report/Moment.h"

namespace sim {
namespace {

void CheckTopLevel(const Entry& file) {
  std::vector<std::string_view> known = {"$schema", "steps", "expectations"};
  for (const Key& key : FlightKeys()) known.push_back(key.name);
  for (const std::string_view key : file.Keys())
    if (std::ranges::find(known, key) == known.end())
      file.FailAtKey(key, fmt::format("unknown key \"{}\"{}", key, DidYouMean(key, known)));
}

// The frame of "frame", or the first one at or behind the time of "second".
int FrameOf(const Entry& entry, const FlightContext& context) {
  const std::string_view key = entry.Has("frame") ? "frame" : "second";
  // A time that is meant to be a frame's own may lie a rounding behind it.
  constexpr double kRounding = 1e-6;
  const double frame = std::max(
      1.0, key == "frame" ? entry.WholeNumber(key) : std::ceil(entry.Number(key) * context.rate - kRounding));
  if (frame > context.frames)
    entry.FailAtValue(key, fmt::format("frame {} lies behind the flight's last, {}", frame, context.frames));
  return static_cast<int>(frame);
}

int MomentOf(const Entry& entry, const FlightContext& context) {
  if (!entry.Has("after")) return FrameOf(entry, context);
  const std::string after = entry.Text("after");
  if (after == "start") return kAfterStart;
  return after == "end" ? kAtEnd : kAfterShutdown;
}

void ReadSpan(const Entry& entry, Expectation& expectation) {
  struct SpanKey {
    std::string_view key;
    Span span;
  };
  for (const auto& [key, span] : {SpanKey{"within", Span::Within}, SpanKey{"throughout", Span::Throughout},
                                  SpanKey{"never", Span::Never}}) {
    if (!entry.Has(key)) continue;
    if (expectation.moment >= kAtEnd) entry.FailAtKey(key, "no frames follow that moment");
    expectation.span = span;
    expectation.frames = entry.WholeNumber(key);
  }
}

void AddStep(const Entry& entry, const FlightContext& context, Flight& flight) {
  const StepWord& word = FindStep(entry);
  std::vector<StepRow>& rows = flight.rows;
  Step step{.line = entry.Line(), .text = entry.Json(), .effect = {}, .index = flight.stepCount++};
  if (entry.Has("later")) {
    if (rows.empty()) entry.FailAtKey("later", "there is no step before this one");
    step.later = entry.WholeNumber("later");
  } else {
    rows.push_back({FrameOf(entry, context), {}});
  }
  step.effect = word.read(entry, context);
  rows.back().steps.push_back(std::move(step));
}

}  // namespace

Flight ReadFlight(const std::string& fileName, const FlightContext& context) {
  const JsonDocument document(fileName);
  const Entry file(document, "", "");
  CheckTopLevel(file);
  Flight flight;
  for (const Entry& entry : file.Elements("steps")) AddStep(entry, context, flight);
  for (const Entry& entry : file.Elements("expectations")) {
    const ExpectationWord& word = FindExpectation(entry);
    Expectation expectation{.moment = MomentOf(entry, context),
                            .line = entry.Line(),
                            .index = flight.expectations.size(),
                            .claim = word.read(entry, context)};
    ReadSpan(entry, expectation);
    flight.expectations.push_back(std::move(expectation));
  }
  std::ranges::stable_sort(flight.rows, {}, &StepRow::frame);
  std::ranges::stable_sort(flight.expectations, {}, &Expectation::moment);
  return flight;
}

}  // namespace sim
