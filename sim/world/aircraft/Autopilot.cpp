// Two loops, each of which asks the one inside it for an angle, with the body's rates for damping: B.
// Stevens, F. Lewis, Aircraft Control and Simulation, second edition, 2003, section 4.5.
#include "world/aircraft/Autopilot.h"

#include <algorithm>

#include "world/Angles.h"

namespace sim::world {
namespace {

constexpr double kMostBank = 20.0;             // degrees
constexpr double kBankPerHeading = 1.2;        // degrees for each that the heading is off
constexpr double kAileronPerBank = 0.045;      // ratio for each degree
constexpr double kAileronPerRollRate = 0.5;    // ratio for each radian per second
constexpr double kElevatorPerPitch = 0.05;     // ratio for each degree
constexpr double kElevatorPerPitchSum = 0.03;  // and degree second
constexpr double kElevatorPerPitchRate = 0.6;
constexpr double kMostPitchSum = 20.0;      // degree seconds
constexpr double kClimbPerAltitude = 0.15;  // metres per second for each metre
constexpr double kMostClimb = 3.0;
constexpr double kPitchPerClimb = 1.5;     // degrees
constexpr double kPitchPerClimbSum = 0.3;  // degrees for each metre
constexpr double kMostClimbSum = 40.0;     // metres
constexpr double kSteepest = 10.0;

}  // namespace

void Autopilot::Steer(Controls& controls, const EulerAngles& angles, const Vector& rates, double altitude,
                      double climb, double seconds) {
  if (holdsHeading) {
    const double bank =
        std::clamp(kBankPerHeading * TurnBetween(angles.heading, targetHeading), -kMostBank, kMostBank);
    controls.aileron =
        std::clamp(kAileronPerBank * (bank - angles.roll) - kAileronPerRollRate * rates.x, -1.0, 1.0);
  }
  if (!holdsPitch && !holdsAltitude) {
    pitchSum = climbSum = 0.0;
    return;
  }
  double wanted = targetPitch;
  if (holdsAltitude) {
    const double missing =
        std::clamp(kClimbPerAltitude * (targetAltitude - altitude), -kMostClimb, kMostClimb) - climb;
    climbSum = std::clamp(climbSum + missing * seconds, -kMostClimbSum, kMostClimbSum);
    wanted = std::clamp(targetPitch + kPitchPerClimb * missing + kPitchPerClimbSum * climbSum, -kSteepest,
                        kSteepest);
  } else {
    climbSum = 0.0;
  }
  const double error = wanted - angles.pitch;
  pitchSum = std::clamp(pitchSum + error * seconds, -kMostPitchSum, kMostPitchSum);
  controls.elevator = std::clamp(
      kElevatorPerPitch * error + kElevatorPerPitchSum * pitchSum - kElevatorPerPitchRate * rates.y, -1.0,
      1.0);
}

}  // namespace sim::world
