// One table names all numbers, for writing as well as for reading.
#include "world/aircraft/Situation.h"

#include <array>
#include <nlohmann/json.hpp>

#include "world/files/JsonTree.h"

namespace sim::world {
namespace {

constexpr const char* kFormat = "Skyvora situation 1";

struct NumberField {
  const char* name;
  double smallest;
  double largest;
  double& (*in)(Situation& situation);
};

template <auto Part, auto Number>
double& In(Situation& situation) {
  return situation.*Part.*Number;
}

constexpr double kFastest = 1'000.0;    // metres per second
constexpr double kFastestTurn = 100.0;  // radians per second

const std::array kNumbers{
    NumberField{"latitude_deg", -90.0, 90.0, In<&Situation::place, &Place::latitude>},
    NumberField{"longitude_deg", -180.0, 180.0, In<&Situation::place, &Place::longitude>},
    NumberField{"altitude_m", -1e3, 1e5, In<&Situation::place, &Place::altitude>},
    NumberField{"heading_deg", 0.0, 360.0, In<&Situation::angles, &EulerAngles::heading>},
    NumberField{"pitch_deg", -90.0, 90.0, In<&Situation::angles, &EulerAngles::pitch>},
    NumberField{"roll_deg", -180.0, 180.0, In<&Situation::angles, &EulerAngles::roll>},
    NumberField{"north_m_per_s", -kFastest, kFastest, In<&Situation::velocity, &Vector::x>},
    NumberField{"east_m_per_s", -kFastest, kFastest, In<&Situation::velocity, &Vector::y>},
    NumberField{"down_m_per_s", -kFastest, kFastest, In<&Situation::velocity, &Vector::z>},
    NumberField{"roll_rate_rad_per_s", -kFastestTurn, kFastestTurn, In<&Situation::rates, &Vector::x>},
    NumberField{"pitch_rate_rad_per_s", -kFastestTurn, kFastestTurn, In<&Situation::rates, &Vector::y>},
    NumberField{"yaw_rate_rad_per_s", -kFastestTurn, kFastestTurn, In<&Situation::rates, &Vector::z>},
    NumberField{"fuel_kg", 0.0, 1e6, [](Situation& one) -> double& { return one.fuel; }},
    NumberField{"throttle_ratio", 0.0, 1.0, In<&Situation::controls, &Controls::throttle>},
    NumberField{"elevator_ratio", -1.0, 1.0, In<&Situation::controls, &Controls::elevator>},
    NumberField{"aileron_ratio", -1.0, 1.0, In<&Situation::controls, &Controls::aileron>},
    NumberField{"rudder_ratio", -1.0, 1.0, In<&Situation::controls, &Controls::rudder>},
    NumberField{"brake_ratio", 0.0, 1.0, In<&Situation::controls, &Controls::brake>},
    NumberField{"elevator_trim_ratio", -1.0, 1.0, In<&Situation::controls, &Controls::trim>},
    NumberField{"target_heading_deg", 0.0, 360.0, In<&Situation::autopilot, &Autopilot::targetHeading>},
    NumberField{"target_pitch_deg", -90.0, 90.0, In<&Situation::autopilot, &Autopilot::targetPitch>},
    NumberField{"target_altitude_m", -1e3, 1e5, In<&Situation::autopilot, &Autopilot::targetAltitude>},
    NumberField{"wind_from_deg", 0.0, 360.0, In<&Situation::weather, &Weather::windFrom>},
    NumberField{"wind_m_per_s", 0.0, 100.0, In<&Situation::weather, &Weather::windSpeed>},
};

struct SwitchField {
  const char* name;
  bool Autopilot::*member;
};

constexpr std::array kSwitches{SwitchField{"holds_heading", &Autopilot::holdsHeading},
                               SwitchField{"holds_pitch", &Autopilot::holdsPitch},
                               SwitchField{"holds_altitude", &Autopilot::holdsAltitude}};

bool IsKnown(std::string_view name) {
  if (name == "format" || name == "aircraft") return true;
  for (const NumberField& field : kNumbers)
    if (name == field.name) return true;
  for (const SwitchField& field : kSwitches)
    if (name == field.name) return true;
  return false;
}

}  // namespace

std::string ToText(const Situation& situation) {
  Situation copy = situation;
  nlohmann::ordered_json file{{"format", kFormat}, {"aircraft", situation.aircraft}};
  for (const NumberField& field : kNumbers) file[field.name] = field.in(copy);
  for (const SwitchField& field : kSwitches) file[field.name] = situation.autopilot.*field.member;
  return file.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

Situation ParseSituation(const std::string& text, const std::string& fileName) {
  const JsonValue file = ParseJson(text, fileName);
  file.AllowOnlyWhere(IsKnown);
  if (file["format"].Text() != kFormat) file["format"].Fail(std::string("this is not a \"") + kFormat + "\"");
  Situation situation;
  situation.aircraft = file["aircraft"].Text();
  for (const NumberField& field : kNumbers)
    field.in(situation) = file[field.name].Number(field.smallest, field.largest);
  for (const SwitchField& field : kSwitches) situation.autopilot.*field.member = file[field.name].YesOrNo();
  return situation;
}

Situation SituationOf(const Aircraft& aircraft, const Weather& weather) {
  return {.aircraft = "",
          .place = aircraft.motion.place,
          .angles = aircraft.Angles(),
          .velocity = aircraft.motion.velocity,
          .rates = aircraft.motion.rates,
          .fuel = aircraft.motion.fuel,
          .controls = aircraft.controls,
          .autopilot = aircraft.autopilot,
          .weather = weather};
}

void Apply(const Situation& situation, Aircraft& aircraft) {
  aircraft.autopilot = situation.autopilot;
  aircraft.controls = situation.controls;
  aircraft.PutInFlight(situation.place, situation.angles.heading, 0.0);
  aircraft.motion.attitude = Attitude(situation.angles);
  aircraft.motion.velocity = situation.velocity;
  aircraft.motion.rates = situation.rates;
  aircraft.motion.fuel = situation.fuel;
}

}  // namespace sim::world
