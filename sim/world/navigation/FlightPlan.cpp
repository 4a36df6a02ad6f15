// Entries by index.
#include "world/navigation/FlightPlan.h"

#include <algorithm>
#include <cmath>

namespace sim::world {
namespace {

bool IsIndex(int index) { return index >= 0 && index < FlightPlan::kMostEntries; }
std::size_t Position(int index) { return static_cast<std::size_t>(index); }

const FlightPlan::Entry kEmpty;

int CutToLimits(int altitude) {
  return std::clamp(altitude, FlightPlan::kLowestAltitude, FlightPlan::kHighestAltitude);
}

}  // namespace

int FlightPlan::Count() const {
  int count = kMostEntries;
  while (count > 0 && entries[Position(count - 1)].type == kNoType) --count;
  return count;
}

const FlightPlan::Entry& FlightPlan::Get(int index) const {
  return IsIndex(index) ? entries[Position(index)] : kEmpty;
}

void FlightPlan::SetNavAid(int index, int number, const NavAid& navAid, int altitude) {
  if (!IsIndex(index)) return;
  entries[Position(index)] = {.type = navAid.type,
                              .navAid = number,
                              .ident = navAid.ident,
                              .place = navAid.place,
                              .altitude = CutToLimits(altitude)};
}

void FlightPlan::SetPlace(int index, double latitude, double longitude, int altitude) {
  const bool isOnEarth = std::abs(latitude) <= 90.0 && std::abs(longitude) <= 180.0;  // false for no numbers
  if (!IsIndex(index) || !isOnEarth) return;
  entries[Position(index)] = {.type = kPosition,
                              .navAid = kNoNavAid,
                              .ident = "",
                              .place = {.latitude = latitude, .longitude = longitude, .altitude = 0.0},
                              .altitude = CutToLimits(altitude)};
}

void FlightPlan::Clear(int index) {
  if (IsIndex(index)) entries[Position(index)] = {};
}

void FlightPlan::SetDisplayed(int index) {
  if (IsIndex(index)) displayed = index;
}

void FlightPlan::SetDestination(int index) {
  if (IsIndex(index)) destination = index;
}

}  // namespace sim::world
