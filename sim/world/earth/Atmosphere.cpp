// International Standard Atmosphere: ICAO Doc 7488, Manual of the ICAO Standard Atmosphere; its two lowest
// layers.
#include "world/earth/Atmosphere.h"

#include <algorithm>
#include <cmath>

namespace sim::world {
namespace {

constexpr double kSeaLevelTemperature = 288.15;
constexpr double kSeaLevelPressure = 101'325.0;
constexpr double kLapseRate = 0.0065;  // kelvins per metre
constexpr double kTropopause = 11'000.0;
constexpr double kTop = 20'000.0;
constexpr double kGasConstant = 287.05287;  // of air, joules per kilogram and kelvin
constexpr double kGravity = 9.80665;

}  // namespace

Air AirAt(double altitudeMetres) {
  const double altitude = std::clamp(altitudeMetres, 0.0, kTop);
  const double troposphere = std::min(altitude, kTropopause);
  const double temperature = kSeaLevelTemperature - kLapseRate * troposphere;
  double pressure = kSeaLevelPressure *
                    std::pow(temperature / kSeaLevelTemperature, kGravity / (kGasConstant * kLapseRate));
  if (altitude > kTropopause)
    pressure *= std::exp(-kGravity * (altitude - kTropopause) / (kGasConstant * temperature));
  return {
      .temperature = temperature, .pressure = pressure, .density = pressure / (kGasConstant * temperature)};
}

}  // namespace sim::world
