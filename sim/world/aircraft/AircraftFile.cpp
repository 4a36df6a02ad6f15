// The numbers of a description by name: one table for all of them.
#include <array>
#include <string_view>

#include "world/aircraft/AircraftDescription.h"
#include "world/files/JsonTree.h"

namespace sim::world {
namespace {

constexpr std::size_t kMostWheels = 12;
constexpr double kFarthestWheel = 100.0;  // metres

struct NumberField {
  std::string_view group;
  std::string_view name;
  double smallest;
  double largest;
  double& (*in)(AircraftDescription& description);
};

using Description = AircraftDescription;

template <auto Group, auto Number>
double& In(Description& description) {
  return description.*Group.*Number;
}

const std::array kFields{
    NumberField{"mass", "empty_kg", 1.0, 1e6, In<&Description::mass, &Description::Mass::empty>},
    NumberField{"mass", "fuel_capacity_kg", 0.0, 1e6,
                In<&Description::mass, &Description::Mass::fuelCapacity>},
    NumberField{"mass", "roll_inertia_kg_m2", 1.0, 1e9,
                In<&Description::mass, &Description::Mass::rollInertia>},
    NumberField{"mass", "pitch_inertia_kg_m2", 1.0, 1e9,
                In<&Description::mass, &Description::Mass::pitchInertia>},
    NumberField{"mass", "yaw_inertia_kg_m2", 1.0, 1e9,
                In<&Description::mass, &Description::Mass::yawInertia>},
    NumberField{"wing", "area_m2", 0.1, 1e4, In<&Description::wing, &Description::Wing::area>},
    NumberField{"wing", "span_m", 0.1, 200.0, In<&Description::wing, &Description::Wing::span>},
    NumberField{"wing", "chord_m", 0.1, 100.0, In<&Description::wing, &Description::Wing::chord>},
    NumberField{"lift", "at_no_angle", -2.0, 2.0, In<&Description::lift, &Description::Lift::atNoAngle>},
    NumberField{"lift", "per_angle", 0.1, 10.0, In<&Description::lift, &Description::Lift::perAngle>},
    NumberField{"lift", "stall_deg", 1.0, 60.0, In<&Description::lift, &Description::Lift::stallDegrees>},
    NumberField{"lift", "per_pitch_rate", -50.0, 50.0,
                In<&Description::lift, &Description::Lift::perPitchRate>},
    NumberField{"lift", "per_elevator", -5.0, 5.0, In<&Description::lift, &Description::Lift::perElevator>},
    NumberField{"drag", "at_no_lift", 0.001, 1.0, In<&Description::drag, &Description::Drag::atNoLift>},
    NumberField{"drag", "span_efficiency", 0.1, 2.0, In<&Description::drag, &Description::Drag::efficiency>},
    NumberField{"side_force", "per_sideslip", -5.0, 5.0,
                In<&Description::side, &Description::Side::perSideslip>},
    NumberField{"side_force", "per_rudder", -5.0, 5.0, In<&Description::side, &Description::Side::perRudder>},
    NumberField{"roll", "per_sideslip", -5.0, 5.0, In<&Description::roll, &Description::Roll::perSideslip>},
    NumberField{"roll", "per_roll_rate", -5.0, 0.0, In<&Description::roll, &Description::Roll::perRollRate>},
    NumberField{"roll", "per_yaw_rate", -5.0, 5.0, In<&Description::roll, &Description::Roll::perYawRate>},
    NumberField{"roll", "per_aileron", -5.0, 5.0, In<&Description::roll, &Description::Roll::perAileron>},
    NumberField{"roll", "per_rudder", -5.0, 5.0, In<&Description::roll, &Description::Roll::perRudder>},
    NumberField{"pitch", "at_no_angle", -2.0, 2.0, In<&Description::pitch, &Description::Pitch::atNoAngle>},
    NumberField{"pitch", "per_angle", -10.0, 10.0, In<&Description::pitch, &Description::Pitch::perAngle>},
    NumberField{"pitch", "per_pitch_rate", -100.0, 0.0,
                In<&Description::pitch, &Description::Pitch::perPitchRate>},
    NumberField{"pitch", "per_elevator", -10.0, 10.0,
                In<&Description::pitch, &Description::Pitch::perElevator>},
    NumberField{"yaw", "per_sideslip", -5.0, 5.0, In<&Description::yaw, &Description::Yaw::perSideslip>},
    NumberField{"yaw", "per_roll_rate", -5.0, 5.0, In<&Description::yaw, &Description::Yaw::perRollRate>},
    NumberField{"yaw", "per_yaw_rate", -5.0, 0.0, In<&Description::yaw, &Description::Yaw::perYawRate>},
    NumberField{"yaw", "per_aileron", -5.0, 5.0, In<&Description::yaw, &Description::Yaw::perAileron>},
    NumberField{"yaw", "per_rudder", -5.0, 5.0, In<&Description::yaw, &Description::Yaw::perRudder>},
    NumberField{"surfaces", "elevator_deg", 0.0, 60.0,
                In<&Description::surfaces, &Description::Surfaces::elevatorDegrees>},
    NumberField{"surfaces", "aileron_deg", 0.0, 60.0,
                In<&Description::surfaces, &Description::Surfaces::aileronDegrees>},
    NumberField{"surfaces", "rudder_deg", 0.0, 60.0,
                In<&Description::surfaces, &Description::Surfaces::rudderDegrees>},
    NumberField{"engine", "power_w", 1.0, 1e9, In<&Description::engine, &Description::Engine::power>},
    NumberField{"engine", "propeller_efficiency", 0.01, 1.0,
                In<&Description::engine, &Description::Engine::efficiency>},
    NumberField{"engine", "static_thrust_n", 1.0, 1e8,
                In<&Description::engine, &Description::Engine::staticThrust>},
    NumberField{"engine", "fuel_kg_per_kwh", 0.0, 10.0,
                In<&Description::engine, &Description::Engine::fuelPerPower>},
};

bool IsField(std::string_view group, std::string_view name) {
  for (const NumberField& field : kFields)
    if (field.group == group && field.name == name) return true;
  return false;
}

Wheel ReadWheel(const JsonValue& value) {
  value.AllowOnly({"position_m", "spring_n_per_m", "damper_ns_per_m", "steering_deg", "brake"});
  const std::vector<JsonValue>& position = value["position_m"].Elements();
  if (position.size() != 3) value["position_m"].Fail("this must be three numbers: forward, right, down");
  Wheel wheel;
  wheel.position = {position[0].Number(-kFarthestWheel, kFarthestWheel),
                    position[1].Number(-kFarthestWheel, kFarthestWheel),
                    position[2].Number(-kFarthestWheel, kFarthestWheel)};
  if (const auto spring = value.Find("spring_n_per_m")) wheel.spring = spring->Number(1.0, 1e8);
  if (const auto damper = value.Find("damper_ns_per_m")) wheel.damper = damper->Number(0.0, 1e7);
  if (const auto steering = value.Find("steering_deg")) wheel.steeringDegrees = steering->Number(0.0, 80.0);
  if (const auto brake = value.Find("brake")) wheel.hasBrake = brake->YesOrNo();
  return wheel;
}

}  // namespace

AircraftDescription ParseAircraft(const std::string& text, const std::string& fileName) {
  const JsonValue file = ParseJson(text, fileName);
  file.AllowOnly({"name", "model", "mass", "wing", "lift", "drag", "side_force", "roll", "pitch", "yaw",
                  "surfaces", "engine", "wheels"});
  AircraftDescription description;
  description.name = file["name"].Text();
  if (const auto model = file.Find("model")) description.modelFile = model->Text();
  for (const NumberField& field : kFields) {
    const auto group = file.Find(field.group);
    const auto value = group ? group->Find(field.name) : std::nullopt;
    if (value) field.in(description) = value->Number(field.smallest, field.largest);
  }
  for (const std::string_view group :
       {"mass", "wing", "lift", "drag", "side_force", "roll", "pitch", "yaw", "surfaces", "engine"})
    if (const auto values = file.Find(group))
      values->AllowOnlyWhere([group](std::string_view name) { return IsField(group, name); });
  if (const auto wheels = file.Find("wheels")) {
    description.wheels.clear();
    if (wheels->Elements().size() > kMostWheels) wheels->Fail("there are more than 12 wheels");
    for (const JsonValue& wheel : wheels->Elements()) description.wheels.push_back(ReadWheel(wheel));
  }
  return description;
}

}  // namespace sim::world
