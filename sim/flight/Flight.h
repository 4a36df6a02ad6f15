// A flight: what the simulator does at which frame, and what must be true then. Read from a JSON file, whose
// words docs/flight-files.md describes.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "flight/Vocabulary.h"

namespace sim {

struct Step {
  int line;          // in the file
  std::string text;  // as it stands there, in one line of JSON
  Effect effect;
  int later = 0;          // frames after the step before it in its row was done
  std::size_t index = 0;  // among the file's steps
};

// Steps one after the other: the first at a frame, each other one after the one before it was done.
struct StepRow {
  int frame;  // before which the first is carried out
  std::vector<Step> steps;
};

// For how long an expectation is looked at, from its moment on.
enum class Span { Once, Within, Throughout, Never };

struct Expectation {
  int moment;         // checked after the frame; or another moment (report/Moment.h)
  int line;           // in the file
  std::size_t index;  // among the file's expectations
  Claim claim;
  Span span = Span::Once;
  int frames = 0;  // of the span, those after the moment
};

struct Flight {
  std::vector<StepRow> rows;              // in the order of their frames
  std::vector<Expectation> expectations;  // in the order of their moments
  std::size_t stepCount = 0;              // in all rows

  bool NeedsCosts() const {
    return std::ranges::any_of(expectations, [](const Expectation& one) { return one.claim.needsCosts; });
  }
};

// Reads a flight of so many frames over a simulator folder. Throws InputError, also when a step or an
// expectation lies behind the last frame or names a file that does not exist.
Flight ReadFlight(const std::string& fileName, const FlightContext& context);

}  // namespace sim
