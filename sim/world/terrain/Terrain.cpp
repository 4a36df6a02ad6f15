// How the pieces of the ground are put together.
#include "world/terrain/Terrain.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "world/Angles.h"
#include "world/terrain/NaturalHeight.h"

namespace sim::world {
namespace {

constexpr Place kShipsCourse{.latitude = 54.34, .longitude = 10.31, .altitude = 0.0};

constexpr double kFlatRadius = 1'200.0;   // of a level field, metres
constexpr double kOuterRadius = 3'500.0;  // beyond which the ground is as nature made it

constexpr double kCellDegrees = 0.1;  // wider than the outer radius
constexpr int kRows = 41;
constexpr int kColumns = 71;

constexpr int kProbeRounds = 8;
constexpr double kProbePrecision = 1e-6;  // metres

int RowOf(const Place& place) {
  return static_cast<int>((place.latitude - kWorldRegion.south) / kCellDegrees);
}
int ColumnOf(const Place& place) {
  return static_cast<int>((place.longitude - kWorldRegion.west) / kCellDegrees);
}
std::size_t CellAt(int row, int column) {
  return static_cast<std::size_t>(std::clamp(row, 0, kRows - 1)) * kColumns +
         static_cast<std::size_t>(std::clamp(column, 0, kColumns - 1));
}

// The field's share in the ground at a distance from its middle, and how fast that share grows with it.
struct Share {
  double part;
  double slope;
};
Share ShareAt(double distance) {
  if (distance <= kFlatRadius) return {.part = 1.0, .slope = 0.0};
  if (distance >= kOuterRadius) return {.part = 0.0, .slope = 0.0};
  constexpr double kWidth = kOuterRadius - kFlatRadius;
  const double way = (distance - kFlatRadius) / kWidth;
  return {.part = 1.0 - way * way * way * (way * (way * 6.0 - 15.0) + 10.0),
          .slope = -30.0 * way * way * (way - 1.0) * (way - 1.0) / kWidth};
}

void Level(Height& height, const Place& field, const Place& place) {
  const GroundOffset offset = OffsetBetween(field, place);
  const double distance = std::hypot(offset.north, offset.east);
  const Share share = ShareAt(distance);
  if (share.part <= 0.0) return;
  const double rise = field.altitude - height.metres;
  const double outward = distance > 0.0 ? share.slope * rise / distance : 0.0;
  height.metres += share.part * rise;
  height.northSlope = (1.0 - share.part) * height.northSlope + outward * offset.north;
  height.eastSlope = (1.0 - share.part) * height.eastSlope + outward * offset.east;
}

}  // namespace

Terrain::Terrain(const std::vector<Place>& levelFields)
    : deck(kShipsCourse), fields(levelFields), fieldsOfCell(static_cast<std::size_t>(kRows) * kColumns) {
  for (int number = 0; number < static_cast<int>(fields.size()); ++number) {
    const Place& field = fields[static_cast<std::size_t>(number)];
    if (!kWorldRegion.Contains(field)) continue;
    for (int row = RowOf(field) - 1; row <= RowOf(field) + 1; ++row)
      for (int column = ColumnOf(field) - 1; column <= ColumnOf(field) + 1; ++column) {
        std::vector<int>& cell = fieldsOfCell[CellAt(row, column)];
        if (std::ranges::find(cell, number) == cell.end()) cell.push_back(number);
      }
  }
}

const Place* Terrain::LevelFieldNear(const Place& place) const {
  const Place* nearest = nullptr;
  double smallest = kOuterRadius;
  for (const int number : fieldsOfCell[CellAt(RowOf(place), ColumnOf(place))]) {
    const Place& field = fields[static_cast<std::size_t>(number)];
    const GroundOffset offset = OffsetBetween(field, place);
    const double distance = std::hypot(offset.north, offset.east);
    if (distance >= smallest) continue;
    smallest = distance;
    nearest = &field;
  }
  return nearest;
}

std::optional<Ground> Terrain::GroundAt(const Place& place) const {
  if (!kWorldRegion.Contains(place)) return std::nullopt;
  Ground ground;
  if (deck.Covers(place)) {
    const GroundOffset velocity = deck.VelocityAt(place);
    ground.altitude = Deck::kHeight;
    ground.velocity = {velocity.east, 0.0, -velocity.north};
    ground.isDeck = true;
    return ground;
  }
  Height height = NaturalHeightAt(place);
  if (const Place* const field = LevelFieldNear(place)) Level(height, *field, place);
  ground.isWet = height.metres <= 0.0;
  if (ground.isWet) return ground;
  ground.altitude = height.metres;
  ground.normal = Unit({-height.eastSlope, 1.0, height.northSlope});
  return ground;
}

std::optional<Terrain::Hit> Terrain::Probe(const LocalFrame& frame, const Vector& point) const {
  Vector location = point;
  Place place;
  Ground ground;
  // The frame's y is not quite the way down at the point, so that going down changes the place a little.
  for (int round = 0; round < kProbeRounds; ++round) {
    place = frame.ToPlace(location);
    const std::optional<Ground> found = GroundAt(place);
    if (!found) return std::nullopt;
    ground = *found;
    const double height = place.altitude - ground.altitude;
    location.y -= height;
    if (std::abs(height) < kProbePrecision) break;
  }
  const LocalFrame::Directions directions = frame.DirectionsAt(place);
  const auto toLocal = [&](const Vector& vector) {
    return vector.x * directions.east + vector.y * directions.up + -vector.z * directions.north;
  };
  return Hit{.location = location,
             .normal = toLocal(ground.normal),
             .velocity = toLocal(ground.velocity),
             .isWet = ground.isWet};
}

}  // namespace sim::world
