// Where the user's aircraft is and what it does, for a file and from one.
#pragma once

#include <string>

#include "world/aircraft/Aircraft.h"

namespace sim::world {

struct Situation {
  std::string aircraft;  // the path of its description, relative to the simulator folder; empty for none
  Place place;
  EulerAngles angles;
  Vector velocity;  // north, east, down, metres per second
  Vector rates;     // roll, pitch, yaw, radians per second
  double fuel = 0.0;
  Controls controls;
  Autopilot autopilot;
  Weather weather;
};

std::string ToText(const Situation& situation);

// Throws FileError, and nothing of the file counts then.
Situation ParseSituation(const std::string& text, const std::string& fileName);

// What an aircraft does now; without the path of its description, and with the weather as it is.
Situation SituationOf(const Aircraft& aircraft, const Weather& weather);

// Puts an aircraft into a situation, without damage.
void Apply(const Situation& situation, Aircraft& aircraft);

}  // namespace sim::world
