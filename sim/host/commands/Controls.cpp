// The controls in a pilot's hands. Held, they move on by a little in each pass.
#include <algorithm>

#include "host/commands/CommandRow.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr double kThrottleStep = 0.01;
constexpr double kControlStep = 0.02;
constexpr double kTrimStep = 0.005;

world::Controls& Controls() { return gWorld.aircraft.controls; }
world::Autopilot& Autopilot() { return gWorld.aircraft.autopilot; }

void MoveThrottle(double by) { Controls().throttle = std::clamp(Controls().throttle + by, 0.0, 1.0); }

// The autopilot lets go of what a hand moves.
void MoveElevator(double by) {
  Autopilot().holdsPitch = Autopilot().holdsAltitude = false;
  Controls().elevator = std::clamp(Controls().elevator + by, -1.0, 1.0);
}

void MoveAileron(double by) {
  Autopilot().holdsHeading = false;
  Controls().aileron = std::clamp(Controls().aileron + by, -1.0, 1.0);
}

void MoveRudder(double by) { Controls().rudder = std::clamp(Controls().rudder + by, -1.0, 1.0); }

void MoveTrim(double by) { Controls().trim = std::clamp(Controls().trim + by, -1.0, 1.0); }

void Centre() {
  MoveElevator(-Controls().elevator);
  MoveAileron(-Controls().aileron);
  Controls().rudder = 0.0;
}

}  // namespace

std::vector<CommandRow> ControlCommands() {
  return {
      Repeated("sim/throttle/increase", "Open the throttle by 0.01", [] { MoveThrottle(kThrottleStep); }),
      Repeated("sim/throttle/decrease", "Close the throttle by 0.01", [] { MoveThrottle(-kThrottleStep); }),
      Once("sim/throttle/full", "Open the throttle all the way", [] { Controls().throttle = 1.0; }),
      Once("sim/throttle/idle", "Close the throttle", [] { Controls().throttle = 0.0; }),
      Repeated("sim/controls/elevator_up", "Move the elevator by 0.02, nose up",
               [] { MoveElevator(kControlStep); }),
      Repeated("sim/controls/elevator_down", "Move the elevator by 0.02, nose down",
               [] { MoveElevator(-kControlStep); }),
      Repeated("sim/controls/aileron_right", "Move the ailerons by 0.02, to roll right",
               [] { MoveAileron(kControlStep); }),
      Repeated("sim/controls/aileron_left", "Move the ailerons by 0.02, to roll left",
               [] { MoveAileron(-kControlStep); }),
      Repeated("sim/controls/rudder_right", "Move the rudder by 0.02, to the right",
               [] { MoveRudder(kControlStep); }),
      Repeated("sim/controls/rudder_left", "Move the rudder by 0.02, to the left",
               [] { MoveRudder(-kControlStep); }),
      Once("sim/controls/centre", "Centre elevator, ailerons and rudder", Centre),
      Repeated("sim/controls/trim_up", "Trim the nose up by 0.005", [] { MoveTrim(kTrimStep); }),
      Repeated("sim/controls/trim_down", "Trim the nose down by 0.005", [] { MoveTrim(-kTrimStep); }),
      Once("sim/controls/trim_neutral", "Set the trim to 0", [] { Controls().trim = 0.0; }),
      CommandRow{.name = "sim/controls/brake",
                 .description = "Brake fully as long as it is held",
                 .begin = [] { Controls().brake = 1.0; },
                 .whileHeld = [] { Controls().brake = 1.0; },
                 .end = [] { Controls().brake = 0.0; }},
      Once("sim/controls/parking_brake", "Set the brakes, or release them",
           [] { Controls().brake = Controls().brake > 0.0 ? 0.0 : 1.0; }),
  };
}

}  // namespace sim
