// Holds a heading, and a pitch or an altitude. Whoever moves the elevator or the ailerons switches off the
// hold that they belong to.
#pragma once

#include "world/aircraft/Motion.h"

namespace sim::world {

class Autopilot {
 public:
  bool holdsHeading = true;
  bool holdsPitch = true;
  bool holdsAltitude = false;     // goes before the pitch
  double targetHeading = 90.0;    // degrees true
  double targetPitch = 4.0;       // degrees
  double targetAltitude = 300.0;  // metres

  // Moves the elevator and the ailerons of what it holds. climb: metres per second.
  void Steer(Controls& controls, const EulerAngles& angles, const Vector& rates, double altitude,
             double climb, double seconds);

 private:
  // Errors over time, which end what a steady error would leave: degree seconds, and metres.
  double pitchSum = 0.0;
  double climbSum = 0.0;
};

}  // namespace sim::world
