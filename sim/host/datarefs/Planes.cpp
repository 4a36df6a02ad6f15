// All planes, the user's first. What a plugin writes of an AI plane counts while the plane's switch is 1;
// otherwise the simulator flies it on from there.
#include "host/PlaneServices.h"
#include "host/datarefs/DataRefRow.h"
#include "view/DrawnScene.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr int kPlanes = World::kAiPlanes + 1;

world::AiPlane& Ai(int plane) { return gWorld.aiPlanes[static_cast<std::size_t>(plane - 1)]; }

const world::Place& PlaceOf(int plane) { return plane == 0 ? gWorld.aircraft.motion.place : Ai(plane).place; }
world::EulerAngles AnglesOf(int plane) { return plane == 0 ? gWorld.aircraft.Angles() : Ai(plane).angles; }
world::Vector LocalOf(int plane) { return gWorld.localFrame.ToLocal(PlaceOf(plane)); }

// The user's aircraft is moved by its own datarefs.
template <auto Coordinate>
void SetLocal(int plane, double value) {
  if (plane == 0) return;
  world::Vector local = LocalOf(plane);
  local.*Coordinate = value;
  Ai(plane).place = gWorld.localFrame.ToPlace(local);
}

template <auto Angle>
void SetAngle(int plane, double value) {
  if (plane != 0) Ai(plane).angles.*Angle = value;
}

template <int Plane>
DataRefRow AiSwitch() {
  return Switch(
      "sim/private/net_disables/ai_loc[" + std::to_string(Plane) + "]",
      "whether a plugin flies AI plane " + std::to_string(Plane) + " in the simulator's place",
      [] { return Ai(Plane).isFlownBySimulator ? 0.0 : 1.0; },
      [](double value) { Ai(Plane).isFlownBySimulator = value == 0.0; });
}

template <int Plane>
void AddPlace(std::vector<DataRefRow>& rows) {
  const std::string name = "sim/planes/plane" + std::to_string(Plane);
  const std::string whose = "of AI plane " + std::to_string(Plane);
  rows.push_back(Double(
      name + "_latitude_deg", "degrees", "latitude " + whose, [] { return Ai(Plane).place.latitude; },
      [](double value) { Ai(Plane).place.latitude = value; }, {-89.0, 89.0}));
  rows.push_back(Double(
      name + "_longitude_deg", "degrees", "longitude " + whose, [] { return Ai(Plane).place.longitude; },
      [](double value) { Ai(Plane).place.longitude = value; }, {-180.0, 180.0}));
  rows.push_back(Float(
      name + "_altitude_m", "metres", "altitude " + whose, [] { return Ai(Plane).place.altitude; },
      [](double value) { Ai(Plane).place.altitude = value; }, {-500.0, 50'000.0}));
  rows.push_back(Text(name + "_model_path", "path of the description " + whose,
                      [] { return std::string_view(Ai(Plane).modelPath); }));
}

}  // namespace

std::vector<DataRefRow> PlaneDataRefs() {
  std::vector<DataRefRow> rows{
      Int("sim/planes/count", "planes", "planes in all, the user's included", [] { return double{kPlanes}; }),
      Int("sim/planes/active_count", "planes", "planes that are flown and drawn, the user's included",
          [] { return static_cast<double>(gWorld.activePlanes); }),
      FloatArray(
          "sim/planes/x_m", "metres", "places in local metres, to the east; the user's is not written",
          kPlanes, [](int plane) { return LocalOf(plane).x; }, SetLocal<&world::Vector::x>),
      FloatArray(
          "sim/planes/y_m", "metres", "places in local metres, upward", kPlanes,
          [](int plane) { return LocalOf(plane).y; }, SetLocal<&world::Vector::y>),
      FloatArray(
          "sim/planes/z_m", "metres", "places in local metres, to the south", kPlanes,
          [](int plane) { return LocalOf(plane).z; }, SetLocal<&world::Vector::z>),
      FloatArray(
          "sim/planes/heading_deg", "degrees", "where the noses point, true", kPlanes,
          [](int plane) { return AnglesOf(plane).heading; }, SetAngle<&world::EulerAngles::heading>),
      FloatArray(
          "sim/planes/pitch_deg", "degrees", "how far the noses point up", kPlanes,
          [](int plane) { return AnglesOf(plane).pitch; }, SetAngle<&world::EulerAngles::pitch>),
      FloatArray(
          "sim/planes/roll_deg", "degrees", "how far the wings are banked to the right", kPlanes,
          [](int plane) { return AnglesOf(plane).roll; }, SetAngle<&world::EulerAngles::roll>),
      FloatArray("sim/planes/speed_m_per_s", "metres per second", "speeds over the ground", kPlanes,
                 [](int plane) { return plane == 0 ? gWorld.aircraft.GroundSpeed() : Ai(plane).speed; }),
      IntArray("sim/planes/times_drawn_by_plugin", "times",
               "how often a plugin drew each plane in the frame drawn last", kPlanes,
               [](int plane) { return static_cast<double>(CountPlaneDraws(plane)); }),
      AiSwitch<1>(),
      AiSwitch<2>(),
      AiSwitch<3>(),
  };
  AddPlace<1>(rows);
  AddPlace<2>(rows);
  AddPlace<3>(rows);
  return rows;
}

}  // namespace sim
