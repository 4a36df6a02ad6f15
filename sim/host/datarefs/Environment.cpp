// Earth, air, ground and sea around the user's aircraft.
#include "host/datarefs/DataRefRow.h"
#include "world/World.h"
#include "world/earth/Atmosphere.h"

namespace sim {
namespace {

world::Air Air() { return world::AirAt(gWorld.aircraft.motion.place.altitude); }

// The sea where there is no world.
world::Ground GroundBelow() {
  return gWorld.terrain.GroundAt(gWorld.aircraft.motion.place).value_or(world::Ground{.isWet = true});
}

void AddEarth(std::vector<DataRefRow>& rows) {
  rows.push_back(Double("sim/earth/reference_latitude_deg", "degrees", "where local metres have their origin",
                        [] { return gWorld.localFrame.Reference().latitude; }));
  rows.push_back(Double("sim/earth/reference_longitude_deg", "degrees",
                        "where local metres have their origin",
                        [] { return gWorld.localFrame.Reference().longitude; }));
  rows.push_back(Float("sim/earth/gravity_m_per_s2", "metres per second squared", "gravity at the aircraft",
                       [] { return world::GravityAt(gWorld.aircraft.motion.place.latitude); }));
}

void AddWeather(std::vector<DataRefRow>& rows) {
  rows.push_back(Float(
      "sim/weather/wind_from_deg", "degrees", "where the wind comes from, true",
      [] { return gWorld.weather.windFrom; },
      [](double value) { gWorld.weather.windFrom = world::NormalHeading(value); }, {-1e6, 1e6}));
  rows.push_back(Float(
      "sim/weather/wind_m_per_s", "metres per second", "speed of the wind",
      [] { return gWorld.weather.windSpeed; }, [](double value) { gWorld.weather.windSpeed = value; },
      {0.0, 100.0}));
  rows.push_back(Float("sim/weather/air_temperature_k", "kelvins", "temperature of the air at the aircraft",
                       [] { return Air().temperature; }));
  rows.push_back(Float("sim/weather/air_pressure_pa", "pascals", "pressure of the air at the aircraft",
                       [] { return Air().pressure; }));
  rows.push_back(Float("sim/weather/air_density_kg_per_m3", "kilograms per cubic metre",
                       "density of the air at the aircraft", [] { return Air().density; }));
}

void AddGround(std::vector<DataRefRow>& rows) {
  rows.push_back(Float("sim/terrain/ground_altitude_m", "metres", "altitude of the ground or the water below",
                       [] { return GroundBelow().altitude; }));
  rows.push_back(Switch("sim/terrain/is_water", "whether there is water below",
                        [] { return GroundBelow().isWet ? 1.0 : 0.0; }));
  rows.push_back(Switch("sim/terrain/is_deck", "whether the ship's deck is below",
                        [] { return GroundBelow().isDeck ? 1.0 : 0.0; }));
  rows.push_back(Double("sim/ship/latitude_deg", "degrees", "where the middle of the ship's deck is",
                        [] { return gWorld.terrain.Ship().Position().latitude; }));
  rows.push_back(Double("sim/ship/longitude_deg", "degrees", "where the middle of the ship's deck is",
                        [] { return gWorld.terrain.Ship().Position().longitude; }));
  rows.push_back(Float("sim/ship/heading_deg", "degrees", "where the ship sails to, true",
                       [] { return gWorld.terrain.Ship().Heading(); }));
  rows.push_back(Float("sim/ship/speed_m_per_s", "metres per second", "speed of the ship",
                       [] { return world::Deck::kSpeed; }));
  rows.push_back(Float("sim/ship/deck_altitude_m", "metres", "altitude of the ship's deck",
                       [] { return world::Deck::kHeight; }));
}

}  // namespace

std::vector<DataRefRow> EnvironmentDataRefs() {
  std::vector<DataRefRow> rows;
  AddEarth(rows);
  AddWeather(rows);
  AddGround(rows);
  return rows;
}

}  // namespace sim
