// The user's aircraft as a whole, and the wind around it.
#include <algorithm>

#include "host/Placement.h"
#include "host/commands/CommandRow.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr double kStrongestWind = 100.0;  // metres per second
constexpr double kWindTurn = 10.0;        // degrees

void PlaceAtNearestAirport() {
  const int number = gWorld.navigation.Find({.types = world::kAirport, .near = gWorld.aircraft.motion.place});
  if (const world::NavAid* const airport = gWorld.navigation.Get(number)) PlaceAtAirport(airport->ident);
}

void BlowStronger(double by) {
  gWorld.weather.windSpeed = std::clamp(gWorld.weather.windSpeed + by, 0.0, kStrongestWind);
}

void TurnWind(double by) { gWorld.weather.windFrom = world::NormalHeading(gWorld.weather.windFrom + by); }

}  // namespace

std::vector<CommandRow> AircraftCommands() {
  return {
      Once("sim/aircraft/place_again", "Put the aircraft back to where it was placed last, whole again",
           PlaceAgain),
      Once("sim/aircraft/place_at_home", "Put the aircraft on the runway of Home Field",
           [] { PlaceAtAirport("HOME"); }),
      Once("sim/aircraft/place_at_nearest_airport", "Put the aircraft on the runway of the nearest airport",
           PlaceAtNearestAirport),
      Once("sim/aircraft/place_on_ship", "Put the aircraft on the deck of the ship", PlaceOnShip),
      Once("sim/aircraft/refuel", "Fill the tanks",
           [] { gWorld.aircraft.motion.fuel = gWorld.aircraft.description.mass.fuelCapacity; }),
      Repeated("sim/weather/wind_stronger", "Let the wind blow stronger by 1 metre per second",
               [] { BlowStronger(1.0); }),
      Repeated("sim/weather/wind_weaker", "Let the wind blow weaker by 1 metre per second",
               [] { BlowStronger(-1.0); }),
      Repeated("sim/weather/wind_right", "Let the wind turn right by 10 degrees",
               [] { TurnWind(kWindTurn); }),
      Repeated("sim/weather/wind_left", "Let the wind turn left by 10 degrees", [] { TurnWind(-kWindTurn); }),
      Once("sim/weather/calm", "Let the wind cease", [] { gWorld.weather.windSpeed = 0.0; }),
  };
}

}  // namespace sim
