// A flight: what the simulator does at which frame, and what must be true then. Read from a JSON file, whose
// words docs/flight-files.md describes.
#pragma once

#include <string>
#include <vector>

#include "flight/Vocabulary.h"

namespace sim {

struct Step {
  int frame;  // carried out before the frame
  int line;   // in the file
  Effect effect;
};

struct Expectation {
  int moment;         // checked after the frame; or another moment (report/Moment.h)
  int line;           // in the file
  std::size_t index;  // among the file's expectations
  Claim claim;
};

struct Flight {
  std::vector<Step> steps;                // in the order of their frames
  std::vector<Expectation> expectations;  // in the order of their moments
};

// Reads a flight of so many frames over a simulator folder. Throws InputError, also when a step or an
// expectation lies behind the last frame or names a file that does not exist.
Flight ReadFlight(const std::string& fileName, const FlightContext& context);

}  // namespace sim
