// Value noise: random heights on the corners of square grids, one grid finer than the other, with smooth
// curves between them.
//
// The curve is that of K. Perlin, Improving Noise, ACM Transactions on Graphics 21(3), 2002: its first and
// second derivatives are 0 at the corners. The random numbers are made by the mixing function of G. Steele,
// D. Lea and C. Flood, Fast Splittable Pseudorandom Number Generators, OOPSLA 2014.
#include "world/terrain/NaturalHeight.h"

#include <array>
#include <cmath>
#include <cstdint>

#include "world/Angles.h"

namespace sim::world {
namespace {

struct Octave {
  double width;   // metres from corner to corner
  double height;  // metres, up or down at most
};

constexpr std::array<Octave, 5> kOctaves{
    {{45'000.0, 300.0}, {14'000.0, 130.0}, {4'500.0, 45.0}, {1'600.0, 12.0}, {500.0, 2.5}}};
constexpr double kMeanHeight = 40.0;
constexpr std::uint64_t kSeed = 1223;

// The grids lie on a plain map, on which these are the metres of a degree.
constexpr double kMapMetresPerDegreeNorth = 111'300.0;
constexpr double kMapMetresPerDegreeEast = 65'000.0;

// A number from -1 to 1 for a corner of a grid.
double Corner(std::int64_t column, std::int64_t row, std::uint64_t grid) {
  std::uint64_t bits = kSeed + grid * 0xD1B54A32D192ED03U;
  for (const std::int64_t number : {column, row}) {
    bits += static_cast<std::uint64_t>(number) * 0x9E3779B97F4A7C15U + 0x9E3779B97F4A7C15U;
    bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBU;
    bits ^= bits >> 31U;
  }
  return static_cast<double>(bits >> 11U) * 0x1p-52 - 1.0;
}

// A value and its two slopes, in units of the grid.
struct Noise {
  double value;
  double eastSlope;
  double northSlope;
};

double Curve(double part) { return part * part * part * (part * (part * 6.0 - 15.0) + 10.0); }
double SlopeOfCurve(double part) { return 30.0 * part * part * (part - 1.0) * (part - 1.0); }

Noise NoiseAt(double east, double north, std::uint64_t grid) {
  const double column = std::floor(east);
  const double row = std::floor(north);
  const auto left = static_cast<std::int64_t>(column);
  const auto below = static_cast<std::int64_t>(row);
  const double southWest = Corner(left, below, grid);
  const double southEast = Corner(left + 1, below, grid);
  const double northWest = Corner(left, below + 1, grid);
  const double northEast = Corner(left + 1, below + 1, grid);
  const double toEast = Curve(east - column);
  const double toNorth = Curve(north - row);
  const double twist = southWest - southEast - northWest + northEast;
  return {.value = southWest + (southEast - southWest) * toEast + (northWest - southWest) * toNorth +
                   twist * toEast * toNorth,
          .eastSlope = SlopeOfCurve(east - column) * (southEast - southWest + twist * toNorth),
          .northSlope = SlopeOfCurve(north - row) * (northWest - southWest + twist * toEast)};
}

}  // namespace

Height NaturalHeightAt(const Place& place) {
  const double mapEast = (place.longitude - kWorldRegion.west) * kMapMetresPerDegreeEast;
  const double mapNorth = (place.latitude - kWorldRegion.south) * kMapMetresPerDegreeNorth;
  Height height{.metres = kMeanHeight, .northSlope = 0.0, .eastSlope = 0.0};
  for (std::size_t grid = 0; grid < kOctaves.size(); ++grid) {
    const Octave& octave = kOctaves[grid];
    const Noise noise = NoiseAt(mapEast / octave.width, mapNorth / octave.width, grid);
    height.metres += octave.height * noise.value;
    height.northSlope += octave.height / octave.width * noise.northSlope;
    height.eastSlope += octave.height / octave.width * noise.eastSlope;
  }
  // From metres of the map to metres on the ground.
  const MetresPerRadian metres =
      MetresPerRadianAt({.latitude = place.latitude, .longitude = 0.0, .altitude = height.metres});
  height.northSlope *= kMapMetresPerDegreeNorth / ToRadians(metres.north);
  height.eastSlope *= kMapMetresPerDegreeEast / ToRadians(metres.east);
  return height;
}

}  // namespace sim::world
