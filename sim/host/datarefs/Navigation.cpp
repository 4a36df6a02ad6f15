// Navaids, the flight plan and the GPS.
#include "host/datarefs/DataRefRow.h"
#include "world/World.h"

namespace sim {
namespace {

const world::NavAid* Destination() { return gWorld.navigation.Get(gWorld.gpsDestination); }

world::Way WayToDestination() {
  const world::NavAid* const destination = Destination();
  return destination != nullptr ? world::WayBetween(gWorld.aircraft.motion.place, destination->place)
                                : world::Way{};
}

void SetDestination(double value) {
  const int number = static_cast<int>(value);
  gWorld.gpsDestination = gWorld.navigation.Get(number) != nullptr ? number : world::kNoNavAid;
}

}  // namespace

std::vector<DataRefRow> NavigationDataRefs() {
  constexpr Limits kEntries{0.0, world::FlightPlan::kMostEntries - 1.0};
  return {
      Int("sim/navigation/navaid_count", "navaids", "navaids in the database",
          [] { return static_cast<double>(gWorld.navigation.Count()); }),
      Int("sim/flight_plan/entry_count", "entries",
          "entries of the flight plan, up to the last that is not empty",
          [] { return static_cast<double>(gWorld.flightPlan.Count()); }),
      Int(
          "sim/flight_plan/displayed_entry", "index", "the entry that the user looks at",
          [] { return static_cast<double>(gWorld.flightPlan.Displayed()); },
          [](double value) { gWorld.flightPlan.SetDisplayed(static_cast<int>(value)); }, kEntries),
      Int(
          "sim/flight_plan/destination_entry", "index", "the entry that is flown to",
          [] { return static_cast<double>(gWorld.flightPlan.Destination()); },
          [](double value) { gWorld.FlyToEntry(static_cast<int>(value)); }, kEntries),
      Int("sim/gps/destination_navaid", "reference",
          "the navaid that the GPS leads to, or -1; it follows the entry that is flown to",
          [] { return static_cast<double>(gWorld.gpsDestination); }, SetDestination, {-1.0, 1e6}),
      Text("sim/gps/destination_ident", "ident of that navaid",
           [] {
             return Destination() != nullptr ? std::string_view(Destination()->ident) : std::string_view();
           }),
      Text("sim/gps/destination_name", "name of that navaid",
           [] {
             return Destination() != nullptr ? std::string_view(Destination()->name) : std::string_view();
           }),
      Float("sim/gps/distance_m", "metres", "way to that navaid; 0 without one",
            [] { return WayToDestination().metres; }),
      Float("sim/gps/bearing_deg", "degrees", "heading to that navaid, true; 0 without one",
            [] { return WayToDestination().heading; }),
  };
}

}  // namespace sim
