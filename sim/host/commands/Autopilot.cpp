#include <algorithm>

#include "host/commands/CommandRow.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr double kAltitudeStep = 25.0;  // metres
constexpr double kSteepestHold = 30.0;  // degrees

world::Autopilot& Autopilot() { return gWorld.aircraft.autopilot; }

void TurnTarget(double degrees) {
  Autopilot().targetHeading = world::NormalHeading(Autopilot().targetHeading + degrees);
}

void TiltTarget(double degrees) {
  Autopilot().targetPitch = std::clamp(Autopilot().targetPitch + degrees, -kSteepestHold, kSteepestHold);
}

void LetGo() {
  Autopilot().holdsHeading = Autopilot().holdsPitch = Autopilot().holdsAltitude = false;
  gWorld.fliesToGpsDestination = false;
}

void HoldAsItIs() {
  Autopilot().holdsHeading = Autopilot().holdsAltitude = true;
  Autopilot().targetHeading = gWorld.aircraft.Angles().heading;
  Autopilot().targetAltitude = gWorld.aircraft.motion.place.altitude;
  gWorld.fliesToGpsDestination = false;
}

void ToggleGps() {
  gWorld.fliesToGpsDestination = !gWorld.fliesToGpsDestination;
  if (gWorld.fliesToGpsDestination) Autopilot().holdsHeading = true;
}

}  // namespace

std::vector<CommandRow> AutopilotCommands() {
  return {
      Once("sim/autopilot/heading_hold", "Hold the target heading, or let go of it",
           [] { Autopilot().holdsHeading = !Autopilot().holdsHeading; }),
      Once("sim/autopilot/pitch_hold", "Hold the target pitch, or let go of it",
           [] { Autopilot().holdsPitch = !Autopilot().holdsPitch; }),
      Once("sim/autopilot/altitude_hold", "Hold the target altitude, or let go of it",
           [] { Autopilot().holdsAltitude = !Autopilot().holdsAltitude; }),
      Once("sim/autopilot/gps_hold", "Fly to the destination of the GPS, or let go of it", ToggleGps),
      Repeated("sim/autopilot/heading_right", "Turn the target heading right by 1 degree",
               [] { TurnTarget(1.0); }),
      Repeated("sim/autopilot/heading_left", "Turn the target heading left by 1 degree",
               [] { TurnTarget(-1.0); }),
      Repeated("sim/autopilot/altitude_up", "Raise the target altitude by 25 metres",
               [] { Autopilot().targetAltitude += kAltitudeStep; }),
      Repeated("sim/autopilot/altitude_down", "Lower the target altitude by 25 metres",
               [] { Autopilot().targetAltitude -= kAltitudeStep; }),
      Repeated("sim/autopilot/pitch_up", "Raise the target pitch by 0.5 degrees", [] { TiltTarget(0.5); }),
      Repeated("sim/autopilot/pitch_down", "Lower the target pitch by 0.5 degrees", [] { TiltTarget(-0.5); }),
      Once("sim/autopilot/hold_as_it_is", "Hold the present heading and altitude", HoldAsItIs),
      Once("sim/autopilot/off", "Let go of everything", LetGo),
  };
}

}  // namespace sim
