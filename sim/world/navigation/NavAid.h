// What one can navigate by: airports, radio stations and fixed points.
#pragma once

#include <string>

#include "world/earth/Earth.h"

namespace sim::world {

// Bits, so that several can be searched for. A position stands for no navaid: it is the type of an entry of
// the flight plan that is a mere place.
enum NavAidType : int {
  kNoType = 0,
  kAirport = 1,
  kNonDirectionalBeacon = 2,
  kOmnidirectionalRange = 4,
  kLandingSystem = 8,
  kFix = 16,
  kPosition = 32
};

constexpr int kNoNavAid = -1;

constexpr std::size_t kLongestIdent = 7;  // characters
constexpr std::size_t kLongestName = 63;

struct NavAid {
  NavAidType type = kNoType;
  std::string ident;
  std::string name;
  Place place;           // at its elevation
  int frequency = 0;     // kilohertz; 0 for a fix
  double heading = 0.0;  // of the runway, degrees true; 0 for what has none
};

// "airport", "ndb", "vor", "ils", "fix", "position", and "" for no type.
const char* NameOf(NavAidType type);

// kNoType when there is none of this name.
NavAidType TypeOf(const std::string& name);

}  // namespace sim::world
