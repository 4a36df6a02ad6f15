// The motion of the user's aircraft: a steady climb and turn, driven by a throttle and a heading to hold.
// Just enough of a flight for the simulator's variables to move as a pilot would expect.
#pragma once

namespace sim {

constexpr double kMetresPerDegree = 111'320.0;  // of latitude

struct AircraftMotion {
  // Controls.
  float throttleRatio = 0.5F;
  float targetHeadingDegrees = 90.0F;

  // State.
  double latitudeDegrees = 54.3;
  double longitudeDegrees = 10.1;
  float altitudeMetres = 300.0F;
  float headingDegrees = 0.0F;
  float speedMetresPerSecond = 50.0F;
  float climbMetresPerSecond = 0.0F;

  void Advance(double seconds);
};

// The same direction, from 0 up to but not including 360.
float NormalHeading(float degrees);

}  // namespace sim
