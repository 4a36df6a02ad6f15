#include "view/gl/GroundColours.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace sim {
namespace {

constexpr double kField = 260.0;  // metres, the side of a field
constexpr double kWood = 1'700.0;

// A number from 0 to 1 that belongs to a square of a map.
double Chance(std::int64_t column, std::int64_t row) {
  std::uint64_t bits = static_cast<std::uint64_t>(column) * 0x9E3779B97F4A7C15U +
                       static_cast<std::uint64_t>(row) * 0xC2B2AE3D27D4EB4FU;
  bits = (bits ^ (bits >> 29U)) * 0xBF58476D1CE4E5B9U;
  return static_cast<double>((bits ^ (bits >> 32U)) >> 40U) * 0x1p-24;
}

double ChanceAt(double east, double north, double side) {
  return Chance(static_cast<std::int64_t>(std::floor(east / side)),
                static_cast<std::int64_t>(std::floor(north / side)));
}

// The same with smooth ways between the squares' corners.
double Smooth(double east, double north, double side) {
  const double column = std::floor(east / side);
  const double row = std::floor(north / side);
  const auto curve = [](double part) { return part * part * (3.0 - 2.0 * part); };
  const double toEast = curve(east / side - column);
  const double toNorth = curve(north / side - row);
  const auto at = [&](int right, int up) {
    return Chance(static_cast<std::int64_t>(column) + right, static_cast<std::int64_t>(row) + up);
  };
  return std::lerp(std::lerp(at(0, 0), at(1, 0), toEast), std::lerp(at(0, 1), at(1, 1), toEast), toNorth);
}

GroundColour Mix(const GroundColour& from, const GroundColour& to, double part) {
  const auto share = static_cast<float>(std::clamp(part, 0.0, 1.0));
  return {std::lerp(from[0], to[0], share), std::lerp(from[1], to[1], share),
          std::lerp(from[2], to[2], share)};
}

double Ramp(double value, double from, double to) {
  return std::clamp((value - from) / (to - from), 0.0, 1.0);
}

constexpr GroundColour kMeadow{0.36F, 0.50F, 0.20F};
constexpr GroundColour kCrop{0.66F, 0.62F, 0.32F};
constexpr GroundColour kDarkField{0.28F, 0.40F, 0.17F};
constexpr GroundColour kWoods{0.17F, 0.32F, 0.16F};
constexpr GroundColour kHeath{0.45F, 0.41F, 0.25F};
constexpr GroundColour kRock{0.50F, 0.48F, 0.45F};
constexpr GroundColour kSand{0.83F, 0.77F, 0.58F};
constexpr GroundColour kShallows{0.30F, 0.60F, 0.66F};
constexpr GroundColour kDeep{0.06F, 0.23F, 0.42F};

}  // namespace

world::Vector Sunlight() { return world::Unit({0.55, 0.62, 0.56}); }

GroundColour LandColour(double east, double north, double height, const world::Vector& normal, double grain) {
  const double choice = ChanceAt(east * 0.94 + north * 0.34, north * 0.94 - east * 0.34, kField);
  GroundColour field = choice < 0.4 ? kMeadow : choice < 0.7 ? kDarkField : kCrop;
  // From afar the fields run into each other.
  field = Mix(field, Mix(kMeadow, kCrop, 0.2), Ramp(grain, 0.5 * kField, 3.0 * kField));
  const double woods = 0.65 * Smooth(east, north, kWood) + 0.35 * Smooth(east, north, 0.3 * kWood);
  GroundColour colour = Mix(field, kWoods, Ramp(woods, 0.52, 0.58));
  colour = Mix(colour, kHeath, Ramp(height, 180.0, 320.0));
  colour = Mix(colour, kRock, std::max(Ramp(height, 320.0, 430.0), Ramp(normal.y, 0.97, 0.90)));
  colour = Mix(kSand, colour, Ramp(height, 1.5, 5.0));
  // Trees and blades, where they are not too far away to be told apart.
  const double grains = 0.30 * (1.0 - Ramp(grain, 40.0, 160.0)) * (ChanceAt(east, north, 18.0) - 0.5);
  const double light = (1.0 + grains) * 0.50 + 0.75 * std::max(Dot(normal, Sunlight()), 0.0);
  for (float& part : colour) part = std::min(part * static_cast<float>(light), 1.0F);
  return colour;
}

GroundColour SeaColour(double east, double north, double depth) {
  const double waves = 0.06 * (Smooth(east, north, 90.0) - 0.5) + 0.10 * (Smooth(east, north, 900.0) - 0.5);
  GroundColour colour = Mix(kShallows, kDeep, std::sqrt(Ramp(depth, 0.0, 45.0)));
  for (float& part : colour) part *= 1.0F + static_cast<float>(waves);
  return colour;
}

}  // namespace sim
