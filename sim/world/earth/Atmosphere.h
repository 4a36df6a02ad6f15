// The air of a standard day, without moisture.
#pragma once

namespace sim::world {

struct Air {
  double temperature;  // kelvins
  double pressure;     // pascals
  double density;      // kilograms per cubic metre
};

// From sea level to 20 km. Below and above, the air of the nearest of the two.
Air AirAt(double altitudeMetres);

constexpr double kSeaLevelDensity = 1.225;

}  // namespace sim::world
