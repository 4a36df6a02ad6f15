// What an aircraft is made of: the numbers that its flight follows from. Without a file they are those of the
// simulator's own light aeroplane, whose coefficients are chosen to be of the size that textbooks give for
// one.
//
// Body axes: x forward, y right, z down, from the centre of mass. Controls are ratios from -1 to 1, positive
// for nose up, roll right and yaw right; coefficients of controls are for one radian of the surface.
#pragma once

#include <string>
#include <vector>

#include "world/Vector.h"

namespace sim::world {

struct Wheel {
  Vector position;               // metres, of its lowest point with no load on it
  double spring = 40'000.0;      // newtons per metre
  double damper = 4'000.0;       // newton seconds per metre
  double steeringDegrees = 0.0;  // at full rudder
  bool hasBrake = false;
};

struct AircraftDescription {
  std::string name = "Skyvora light aeroplane";
  std::string modelFile;  // Wavefront OBJ, beside the description; empty for none

  struct Mass {
    double empty = 860.0;  // kilograms
    double fuelCapacity = 120.0;
    double rollInertia = 1'250.0;  // kilogram square metres
    double pitchInertia = 1'800.0;
    double yawInertia = 2'700.0;
  };
  Mass mass;
  struct Wing {
    double area = 14.5;  // square metres
    double span = 10.2;  // metres
    double chord = 1.45;
  };
  Wing wing;
  struct Lift {
    double atNoAngle = 0.25;     // coefficient of lift at no angle of attack
    double perAngle = 4.9;       // per radian
    double stallDegrees = 15.0;  // the angle of attack at which lift breaks down
    double perPitchRate = 4.0;
    double perElevator = -0.4;  // nose up presses the tail down
  };
  Lift lift;
  struct Drag {
    double atNoLift = 0.031;
    double efficiency = 0.8;  // of the span, Oswald's
  };
  Drag drag;
  struct Side {
    double perSideslip = -0.4;
    double perRudder = -0.15;
  };
  Side side;
  struct Roll {
    double perSideslip = -0.08;
    double perRollRate = -0.47;
    double perYawRate = 0.10;
    double perAileron = 0.17;
    double perRudder = -0.01;
  };
  Roll roll;
  struct Pitch {
    double atNoAngle = 0.037;
    double perAngle = -0.9;
    double perPitchRate = -14.0;
    double perElevator = 1.1;
  };
  Pitch pitch;
  struct Yaw {
    double perSideslip = 0.07;
    double perRollRate = -0.03;
    double perYawRate = -0.10;
    double perAileron = -0.01;
    double perRudder = 0.065;
  };
  Yaw yaw;
  struct Surfaces {
    double elevatorDegrees = 20.0;  // at a ratio of 1
    double aileronDegrees = 18.0;
    double rudderDegrees = 22.0;
  };
  Surfaces surfaces;
  struct Engine {
    double power = 135'000.0;       // watts at sea level
    double efficiency = 0.8;        // of the propeller
    double staticThrust = 3'200.0;  // newtons
    double fuelPerPower = 0.30;     // kilograms per kilowatt hour
  };
  Engine engine;
  std::vector<Wheel> wheels{{.position = {1.2, 0.0, 1.25}, .spring = 30'000.0, .steeringDegrees = 12.0},
                            {.position = {-0.45, -1.25, 1.25}, .hasBrake = true},
                            {.position = {-0.45, 1.25, 1.25}, .hasBrake = true}};
};

// Reads a JSON description: what it does not name stays as it is above. Throws FileError.
AircraftDescription ParseAircraft(const std::string& text, const std::string& fileName);

}  // namespace sim::world
