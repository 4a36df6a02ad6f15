// The user's aircraft: where it is, how it moves and what moves it.
#include "host/datarefs/DataRefRow.h"
#include "world/Angles.h"
#include "world/World.h"
#include "world/earth/Atmosphere.h"

namespace sim {
namespace {

world::Motion& Motion() { return gWorld.aircraft.motion; }
const world::Forces& Forces() { return gWorld.aircraft.Now(); }
world::Vector Local() { return gWorld.localFrame.ToLocal(Motion().place); }

// The airspeed at which the air presses as much at sea level: what an airspeed indicator shows.
double IndicatedAirspeed() {
  return Forces().airspeed * std::sqrt(Forces().airDensity / world::kSeaLevelDensity);
}

double Track() {
  return world::NormalHeading(world::ToDegrees(std::atan2(Motion().velocity.y, Motion().velocity.x)));
}

void AddPlace(std::vector<DataRefRow>& rows) {
  rows.push_back(Double(
      "sim/aircraft/latitude_deg", "degrees", "latitude; written, the aircraft is put there",
      [] { return Motion().place.latitude; }, [](double value) { Motion().place.latitude = value; },
      {-89.0, 89.0}));
  rows.push_back(Double(
      "sim/aircraft/longitude_deg", "degrees", "longitude; written, the aircraft is put there",
      [] { return Motion().place.longitude; }, [](double value) { Motion().place.longitude = value; },
      {-180.0, 180.0}));
  rows.push_back(Float(
      "sim/aircraft/altitude_m", "metres", "height above sea level; written, the aircraft is put there",
      [] { return Motion().place.altitude; }, [](double value) { Motion().place.altitude = value; },
      {-500.0, 50'000.0}));
  rows.push_back(
      Double("sim/aircraft/x_m", "metres", "place in local metres, to the east", [] { return Local().x; }));
  rows.push_back(
      Double("sim/aircraft/y_m", "metres", "place in local metres, upward", [] { return Local().y; }));
  rows.push_back(
      Double("sim/aircraft/z_m", "metres", "place in local metres, to the south", [] { return Local().z; }));
  rows.push_back(Float("sim/aircraft/height_above_ground_m", "metres", "height above the ground or the water",
                       [] { return gWorld.aircraft.HeightAboveGround(); }));
}

void AddAttitude(std::vector<DataRefRow>& rows) {
  rows.push_back(Float("sim/aircraft/heading_deg", "degrees", "where the nose points, true, from 0 to 360",
                       [] { return gWorld.aircraft.Angles().heading; }));
  rows.push_back(Float("sim/aircraft/pitch_deg", "degrees", "how far the nose points up",
                       [] { return gWorld.aircraft.Angles().pitch; }));
  rows.push_back(Float("sim/aircraft/roll_deg", "degrees", "how far the wings are banked to the right",
                       [] { return gWorld.aircraft.Angles().roll; }));
  rows.push_back(Float("sim/aircraft/roll_rate_deg_per_s", "degrees per second", "rolling, to the right",
                       [] { return world::ToDegrees(Motion().rates.x); }));
  rows.push_back(Float("sim/aircraft/pitch_rate_deg_per_s", "degrees per second", "pitching, upward",
                       [] { return world::ToDegrees(Motion().rates.y); }));
  rows.push_back(Float("sim/aircraft/yaw_rate_deg_per_s", "degrees per second", "yawing, to the right",
                       [] { return world::ToDegrees(Motion().rates.z); }));
}

void AddMotion(std::vector<DataRefRow>& rows) {
  rows.push_back(Float("sim/aircraft/speed_m_per_s", "metres per second", "true airspeed",
                       [] { return Forces().airspeed; }));
  rows.push_back(Float("sim/aircraft/indicated_speed_m_per_s", "metres per second",
                       "airspeed as an indicator shows it", IndicatedAirspeed));
  rows.push_back(Float("sim/aircraft/ground_speed_m_per_s", "metres per second", "speed over the ground",
                       [] { return gWorld.aircraft.GroundSpeed(); }));
  rows.push_back(
      Float("sim/aircraft/track_deg", "degrees", "where it moves to over the ground, true", Track));
  rows.push_back(Float("sim/aircraft/climb_m_per_s", "metres per second", "rate of climb",
                       [] { return gWorld.aircraft.Climb(); }));
  rows.push_back(Float("sim/aircraft/east_m_per_s", "metres per second", "velocity to the east",
                       [] { return Motion().velocity.y; }));
  rows.push_back(Float("sim/aircraft/north_m_per_s", "metres per second", "velocity to the north",
                       [] { return Motion().velocity.x; }));
  rows.push_back(Float("sim/aircraft/angle_of_attack_deg", "degrees", "angle of attack",
                       [] { return world::ToDegrees(Forces().angleOfAttack); }));
  rows.push_back(Float("sim/aircraft/sideslip_deg", "degrees", "angle at which the air comes from the right",
                       [] { return world::ToDegrees(Forces().sideslip); }));
}

void AddForces(std::vector<DataRefRow>& rows) {
  rows.push_back(Float("sim/aircraft/lift_n", "newtons", "lift", [] { return Forces().lift; }));
  rows.push_back(Float("sim/aircraft/drag_n", "newtons", "drag", [] { return Forces().drag; }));
  rows.push_back(
      Float("sim/aircraft/thrust_n", "newtons", "thrust of the engine", [] { return Forces().thrust; }));
  rows.push_back(Float("sim/aircraft/mass_kg", "kilograms", "mass with fuel", [] { return Forces().mass; }));
  rows.push_back(Float(
      "sim/aircraft/fuel_kg", "kilograms", "fuel on board", [] { return Motion().fuel; },
      [](double value) { Motion().fuel = std::min(value, gWorld.aircraft.description.mass.fuelCapacity); },
      {0.0, 1e6}));
  rows.push_back(Float("sim/aircraft/fuel_flow_kg_per_s", "kilograms per second",
                       "fuel that the engine burns", [] { return Forces().fuelFlow; }));
  rows.push_back(Float("sim/aircraft/load_factor", "ratio", "weight that the pilot feels: 1 in steady flight",
                       [] { return Forces().loadFactor; }));
}

void AddState(std::vector<DataRefRow>& rows) {
  rows.push_back(Int("sim/aircraft/wheels_on_ground", "wheels", "wheels that touch the ground",
                     [] { return static_cast<double>(Forces().wheelsOnGround); }));
  rows.push_back(Switch("sim/aircraft/is_on_ground", "whether a wheel touches the ground",
                        [] { return gWorld.aircraft.IsOnGround() ? 1.0 : 0.0; }));
  rows.push_back(Switch("sim/aircraft/is_stalled", "whether the air has left the wing",
                        [] { return Forces().isStalled ? 1.0 : 0.0; }));
  rows.push_back(Switch(
      "sim/aircraft/has_crashed",
      "whether it hit the ground too hard, or the water; it lies there until it is put "
      "somewhere else. Written, as if it had, or as if it had not",
      [] { return gWorld.aircraft.HasCrashed() ? 1.0 : 0.0; },
      [](double value) { gWorld.aircraft.SetCrashed(value != 0.0); }));
  rows.push_back(Text("sim/aircraft/name", "name in its description",
                      [] { return std::string_view(gWorld.aircraft.description.name); }));
  rows.push_back(Text("sim/aircraft/model_path", "path of its description; empty while none is loaded",
                      [] { return std::string_view(gWorld.modelPath); }));
}

}  // namespace

std::vector<DataRefRow> AircraftDataRefs() {
  std::vector<DataRefRow> rows;
  AddPlace(rows);
  AddAttitude(rows);
  AddMotion(rows);
  AddForces(rows);
  AddState(rows);
  return rows;
}

}  // namespace sim
