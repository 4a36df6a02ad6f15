// What a pilot or a plugin moves: the controls, the autopilot.
#include "host/datarefs/DataRefRow.h"
#include "world/World.h"

namespace sim {
namespace {

world::Controls& Controls() { return gWorld.aircraft.controls; }
world::Autopilot& Autopilot() { return gWorld.aircraft.autopilot; }

constexpr Limits kRatio{0.0, 1.0};
constexpr Limits kRatioBothWays{-1.0, 1.0};

// Whoever moves a control has it: the autopilot lets go.
void SetElevator(double value) {
  Controls().elevator = value;
  Autopilot().holdsPitch = Autopilot().holdsAltitude = false;
}

void SetAileron(double value) {
  Controls().aileron = value;
  Autopilot().holdsHeading = false;
}

void SetTargetHeading(double value) {
  Autopilot().targetHeading = world::NormalHeading(value);
  Autopilot().holdsHeading = true;
  gWorld.fliesToGpsDestination = false;
}

void AddControls(std::vector<DataRefRow>& rows) {
  rows.push_back(Float(
      "sim/aircraft/throttle_ratio", "ratio", "throttle, from 0, idle, to 1",
      [] { return Controls().throttle; }, [](double value) { Controls().throttle = value; }, kRatio));
  rows.push_back(Float(
      "sim/controls/elevator_ratio", "ratio",
      "elevator, from -1 to 1, nose up; written, the autopilot holds neither pitch nor altitude",
      [] { return Controls().elevator; }, SetElevator, kRatioBothWays));
  rows.push_back(Float(
      "sim/controls/aileron_ratio", "ratio",
      "ailerons, from -1 to 1, roll to the right; written, the autopilot holds no heading",
      [] { return Controls().aileron; }, SetAileron, kRatioBothWays));
  rows.push_back(Float(
      "sim/controls/rudder_ratio", "ratio", "rudder and nose wheel, from -1 to 1, yaw to the right",
      [] { return Controls().rudder; }, [](double value) { Controls().rudder = value; }, kRatioBothWays));
  rows.push_back(Float(
      "sim/controls/elevator_trim_ratio", "ratio", "added to the elevator, from -1 to 1",
      [] { return Controls().trim; }, [](double value) { Controls().trim = value; }, kRatioBothWays));
  rows.push_back(Float(
      "sim/controls/brake_ratio", "ratio", "brakes of the wheels, from 0 to 1",
      [] { return Controls().brake; }, [](double value) { Controls().brake = value; }, kRatio));
}

void AddAutopilot(std::vector<DataRefRow>& rows) {
  rows.push_back(Float("sim/aircraft/target_heading_deg", "degrees",
                       "heading that the autopilot turns to, true; written, it holds a heading",
                       [] { return Autopilot().targetHeading; }, SetTargetHeading, {-1e6, 1e6}));
  rows.push_back(Float(
      "sim/autopilot/target_pitch_deg", "degrees", "pitch that the autopilot holds",
      [] { return Autopilot().targetPitch; }, [](double value) { Autopilot().targetPitch = value; },
      {-30.0, 30.0}));
  rows.push_back(Float(
      "sim/autopilot/target_altitude_m", "metres", "altitude that the autopilot holds",
      [] { return Autopilot().targetAltitude; }, [](double value) { Autopilot().targetAltitude = value; },
      {-500.0, 20'000.0}));
  rows.push_back(Switch(
      "sim/autopilot/holds_heading", "whether the autopilot moves the ailerons",
      [] { return Autopilot().holdsHeading ? 1.0 : 0.0; },
      [](double value) { Autopilot().holdsHeading = value != 0.0; }));
  rows.push_back(Switch(
      "sim/autopilot/holds_pitch", "whether the autopilot moves the elevator for a pitch",
      [] { return Autopilot().holdsPitch ? 1.0 : 0.0; },
      [](double value) { Autopilot().holdsPitch = value != 0.0; }));
  rows.push_back(Switch(
      "sim/autopilot/holds_altitude",
      "whether the autopilot moves the elevator for an altitude; this goes before the pitch",
      [] { return Autopilot().holdsAltitude ? 1.0 : 0.0; },
      [](double value) { Autopilot().holdsAltitude = value != 0.0; }));
  rows.push_back(Switch(
      "sim/autopilot/flies_to_gps_destination",
      "whether the heading to hold is that to the destination of the GPS",
      [] { return gWorld.fliesToGpsDestination ? 1.0 : 0.0; },
      [](double value) {
        gWorld.fliesToGpsDestination = value != 0.0;
        if (gWorld.fliesToGpsDestination) Autopilot().holdsHeading = true;
      }));
}

}  // namespace

std::vector<DataRefRow> ControlDataRefs() {
  std::vector<DataRefRow> rows;
  AddControls(rows);
  AddAutopilot(rows);
  return rows;
}

}  // namespace sim
