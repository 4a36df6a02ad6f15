// The flight plan, the GPS, and the files of both and of the situation.
#include <algorithm>

#include "host/DataFileServices.h"
#include "host/commands/CommandRow.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr const char* kFlightPlanPath = "flight-plan.json";
constexpr const char* kSituationPath = "situation.json";

world::FlightPlan& Plan() { return gWorld.flightPlan; }

void LeadToNearestAirport() {
  gWorld.gpsDestination =
      gWorld.navigation.Find({.types = world::kAirport, .near = gWorld.aircraft.motion.place});
}

}  // namespace

std::vector<CommandRow> NavigationCommands() {
  return {
      Once("sim/flight_plan/show_next", "Show the next entry of the flight plan",
           [] { Plan().SetDisplayed(Plan().Displayed() + 1); }),
      Once("sim/flight_plan/show_previous", "Show the entry of the flight plan before this one",
           [] { Plan().SetDisplayed(Plan().Displayed() - 1); }),
      Once("sim/flight_plan/fly_to_shown", "Fly to the entry that is shown",
           [] { gWorld.FlyToEntry(Plan().Displayed()); }),
      Once("sim/flight_plan/fly_to_next", "Fly to the entry behind the one that is flown to",
           [] { gWorld.FlyToEntry(std::min(Plan().Destination() + 1, std::max(0, Plan().Count() - 1))); }),
      Once("sim/flight_plan/clear", "Empty the flight plan", [] { Plan() = {}; }),
      Once("sim/flight_plan/load", "Load the flight plan from flight-plan.json",
           [] { LoadDataFile(kFlightPlanFile, kFlightPlanPath); }),
      Once("sim/flight_plan/save", "Save the flight plan to flight-plan.json",
           [] { SaveDataFile(kFlightPlanFile, kFlightPlanPath); }),
      Once("sim/situation/load", "Load the situation from situation.json",
           [] { LoadDataFile(kSituationFile, kSituationPath); }),
      Once("sim/situation/save", "Save the situation to situation.json",
           [] { SaveDataFile(kSituationFile, kSituationPath); }),
      Once("sim/gps/to_nearest_airport", "Lead to the nearest airport", LeadToNearestAirport),
      Once("sim/gps/to_destination", "Lead to the navaid of the entry that is flown to",
           [] { gWorld.FlyToEntry(Plan().Destination()); }),
  };
}

}  // namespace sim
