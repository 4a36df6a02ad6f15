// Squares of cells around the middle lie one inside the other, each with cells twice as large as the one
// inside it. Each triangle is cut where the height is that of the sea, so that coasts are sharp lines.
#include "view/gl/Landscape.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "view/gl/GroundColours.h"
#include "world/terrain/NaturalHeight.h"

namespace sim {
namespace {

constexpr double kDeepSea = -60.0;  // metres, where the world ends
constexpr double kMapMetresPerDegreeNorth = 111'300.0;
constexpr double kMapMetresPerDegreeEast = 65'000.0;

std::uint8_t Byte(float part) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(part, 0.0F, 1.0F) * 255.0F));
}

Landscape::Vertex VertexAt(const world::Vector& place, const std::array<float, 3>& colour) {
  return {{static_cast<float>(place.x), static_cast<float>(place.y), static_cast<float>(place.z)},
          {Byte(colour[0]), Byte(colour[1]), Byte(colour[2]), 255}};
}

// The height above the sea, also below it, and the way that the ground faces.
struct Shape {
  double height;
  world::Vector normal;
};
Shape ShapeAt(const world::Terrain& terrain, const world::Place& place) {
  const std::optional<world::Ground> ground = terrain.GroundAt(place);
  if (!ground) return {kDeepSea, {0.0, 1.0, 0.0}};
  if (!ground->isWet && !ground->isDeck) return {std::max(ground->altitude, 0.01), ground->normal};
  return {std::min(world::NaturalHeightAt(place).metres, -0.01), {0.0, 1.0, 0.0}};
}

long MiddleCell(double metres, double cell) { return 2 * std::lround(metres / (2.0 * cell)); }

template <class Place>
Place Between(const Place& from, const Place& to, double part) {
  Place between = from;
  between.ground = from.ground + part * (to.ground - from.ground);
  between.surface = from.surface + part * (to.surface - from.surface);
  between.height = std::lerp(from.height, to.height, part);
  for (std::size_t index = 0; index < 3; ++index) {
    between.land[index] = std::lerp(from.land[index], to.land[index], static_cast<float>(part));
    between.sea[index] = std::lerp(from.sea[index], to.sea[index], static_cast<float>(part));
  }
  return between;
}

}  // namespace

void Landscape::Update(const world::LocalFrame& frame, const world::Terrain& terrain,
                       const world::Vector& middle) {
  const world::Place now = frame.Reference();
  const bool isMoved = now.latitude != reference.latitude || now.longitude != reference.longitude;
  reference = now;
  bool isChanged = false;
  double cell = kFinestCell;
  for (Level& level : levels) {
    const long column = MiddleCell(middle.x, cell);
    const long row = MiddleCell(middle.z, cell);
    if (isMoved || !level.isMade || level.column != column || level.row != row) {
      level.column = column;
      level.row = row;
      Make(level, cell, frame, terrain);
      isChanged = true;
    }
    cell *= 2.0;
  }
  if (!isChanged) return;
  triangles.clear();
  blocks.clear();
  for (std::size_t index = 0; index < levels.size(); ++index)
    Cover(levels[index], index > 0 ? &levels[index - 1] : nullptr);
}

void Landscape::Make(Level& level, double cell, const world::LocalFrame& frame,
                     const world::Terrain& terrain) const {
  level.isMade = true;
  level.points.resize(std::size_t{kCells + 1} * std::size_t{kCells + 1});
  auto point = level.points.begin();
  for (int row = -kCells / 2; row <= kCells / 2; ++row) {
    for (int column = -kCells / 2; column <= kCells / 2; ++column, ++point) {
      world::Place place = frame.ToPlace({static_cast<double>(level.column + column) * cell, 0.0,
                                          static_cast<double>(level.row + row) * cell});
      const Shape shape = ShapeAt(terrain, place);
      place.altitude = shape.height;
      point->ground = frame.ToLocal(place);
      place.altitude = 0.0;
      point->surface = frame.ToLocal(place);
      point->height = shape.height;
      const double east = place.longitude * kMapMetresPerDegreeEast;
      const double north = place.latitude * kMapMetresPerDegreeNorth;
      point->land = LandColour(east, north, shape.height, shape.normal, cell);
      point->sea = SeaColour(east, north, -shape.height);
    }
  }
  CloseSeams(level);
}

// The next level has every second point of this one's edges alone: those between them come to lie on the
// lines that it draws.
void Landscape::CloseSeams(Level& level) {
  const auto at = [&level](int row, int column) -> Point& {
    return level.points[static_cast<std::size_t>(row) * (kCells + 1) + static_cast<std::size_t>(column)];
  };
  for (int index = 1; index < kCells; index += 2) {
    for (const int edge : {0, kCells}) {
      at(edge, index) = Between(at(edge, index - 1), at(edge, index + 1), 0.5);
      at(index, edge) = Between(at(index - 1, edge), at(index + 1, edge), 0.5);
    }
  }
}

void Landscape::Cover(const Level& level, const Level* finer) {
  const auto at = [&level](int row, int column) -> const Point& {
    return level.points[static_cast<std::size_t>(row) * (kCells + 1) + static_cast<std::size_t>(column)];
  };
  // The cells that the finer level covers.
  const long holeColumn = finer == nullptr ? 0 : finer->column / 2 - level.column + kCells / 4;
  const long holeRow = finer == nullptr ? 0 : finer->row / 2 - level.row + kCells / 4;
  const auto isInHole = [&](int row, int column) {
    return finer != nullptr && column >= holeColumn && column < holeColumn + kCells / 2 && row >= holeRow &&
           row < holeRow + kCells / 2;
  };
  const auto coverCell = [&](int row, int column) {
    if (isInHole(row, column)) return;
    AddTriangle(at(row, column), at(row + 1, column), at(row, column + 1));
    AddTriangle(at(row, column + 1), at(row + 1, column), at(row + 1, column + 1));
  };
  for (int top = 0; top < kCells; top += kCellsOfBlock) {
    for (int left = 0; left < kCells; left += kCellsOfBlock) {
      const std::size_t begin = triangles.size();
      for (int row = top; row < top + kCellsOfBlock; ++row)
        for (int column = left; column < left + kCellsOfBlock; ++column) coverCell(row, column);
      AddBlock(begin);
    }
  }
}

void Landscape::AddBlock(std::size_t begin) {
  if (begin == triangles.size()) return;
  const auto placeOf = [](const Vertex& vertex) -> world::Vector {
    return {vertex.position[0], vertex.position[1], vertex.position[2]};
  };
  const std::span block(triangles.begin() + static_cast<std::ptrdiff_t>(begin), triangles.end());
  world::Vector sum;
  for (const Vertex& vertex : block) sum += placeOf(vertex);
  Bounds bounds{(1.0 / static_cast<double>(block.size())) * sum, 0.0};
  for (const Vertex& vertex : block)
    bounds.radius = std::max(bounds.radius, world::Length(placeOf(vertex) - bounds.middle));
  blocks.push_back({begin, triangles.size(), bounds});
}

void Landscape::AddTriangle(const Point& a, const Point& b, const Point& c) {
  const std::array<const Point*, 3> corners{&a, &b, &c};
  // The part of the triangle on each side of the coast, as a fan of up to four corners.
  for (const bool isLand : {true, false}) {
    std::array<Vertex, 4> fan;
    std::size_t count = 0;
    for (std::size_t index = 0; index < 3; ++index) {
      const Point& corner = *corners[index];
      const Point& next = *corners[(index + 1) % 3];
      const bool isHere = (corner.height > 0.0) == isLand;
      if (isHere)
        fan[count++] = isLand ? VertexAt(corner.ground, corner.land) : VertexAt(corner.surface, corner.sea);
      if ((next.height > 0.0) == (corner.height > 0.0)) continue;
      const Point coast = Between(corner, next, corner.height / (corner.height - next.height));
      fan[count++] = VertexAt(coast.surface, isLand ? coast.land : coast.sea);
    }
    for (std::size_t index = 2; index < count; ++index)
      triangles.insert(triangles.end(), {fan[0], fan[index - 1], fan[index]});
  }
}

}  // namespace sim
