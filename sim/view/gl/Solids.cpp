#include "view/gl/Solids.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <vector>

#include "world/terrain/Deck.h"

namespace sim {
namespace {

using Paint = std::array<float, 3>;

constexpr Paint kWhite{0.93F, 0.93F, 0.90F};
constexpr Paint kRed{0.78F, 0.13F, 0.12F};
constexpr Paint kGlass{0.16F, 0.22F, 0.30F};
constexpr Paint kBlack{0.08F, 0.08F, 0.09F};
constexpr Paint kHull{0.40F, 0.44F, 0.48F};
constexpr Paint kDeckGrey{0.24F, 0.26F, 0.28F};

// A cut through a body: an ellipse that stands across z.
struct Ring {
  double z;
  double middleY;
  double halfWidth;
  double halfHeight;
};

class Builder {
 public:
  // Corners in the order of a walk around the side.
  void Side(const std::array<world::Vector, 4>& corners, const Paint& paint) {
    const auto first = static_cast<int>(model.points.size());
    model.points.insert(model.points.end(), corners.begin(), corners.end());
    for (const int last : {2, 3})
      model.triangles.push_back({{first, first + last - 1, first + last}, {paint[0], paint[1], paint[2]}});
  }

  // A body with six sides: the corners of its bottom, and of its top above them, in the order of a walk
  // around.
  void Block(const std::array<world::Vector, 4>& bottom, const std::array<world::Vector, 4>& top,
             const Paint& paint) {
    Side(bottom, paint);
    Side(top, paint);
    for (std::size_t index = 0; index < 4; ++index) {
      const std::size_t next = (index + 1) % 4;
      Side({bottom[index], bottom[next], top[next], top[index]}, paint);
    }
  }

  void Box(const world::Vector& smallest, const world::Vector& largest, const Paint& paint) {
    const auto floor = [&](double y) {
      return std::array<world::Vector, 4>{world::Vector{smallest.x, y, smallest.z},
                                          {largest.x, y, smallest.z},
                                          {largest.x, y, largest.z},
                                          {smallest.x, y, largest.z}};
    };
    Block(floor(smallest.y), floor(largest.y), paint);
  }

  void Body(std::initializer_list<Ring> rings, const Paint& paint) {
    constexpr int kSides = 14;
    const auto at = [](const Ring& ring, int side) {
      const double angle = 2.0 * std::numbers::pi * side / kSides;
      return world::Vector{ring.halfWidth * std::sin(angle), ring.middleY + ring.halfHeight * std::cos(angle),
                           ring.z};
    };
    for (const Ring* ring = rings.begin(); ring + 1 < rings.end(); ++ring)
      for (int side = 0; side < kSides; ++side)
        Side({at(*ring, side), at(*ring, side + 1), at(ring[1], side + 1), at(ring[1], side)}, paint);
  }

  world::ObjectModel Done() {
    if (model.points.empty()) return model;
    model.smallest = model.largest = model.points.front();
    for (const world::Vector& point : model.points) {
      model.smallest = {std::min(model.smallest.x, point.x), std::min(model.smallest.y, point.y),
                        std::min(model.smallest.z, point.z)};
      model.largest = {std::max(model.largest.x, point.x), std::max(model.largest.y, point.y),
                       std::max(model.largest.z, point.z)};
    }
    return model;
  }

 private:
  world::ObjectModel model;
};

// A surface to one side, from its root to its tip.
void Wing(Builder& builder, double side, const world::Vector& root, double rootChord,
          const world::Vector& tip, double tipChord, double thickness, const Paint& paint) {
  const auto outline = [&](double up) {
    return std::array<world::Vector, 4>{world::Vector{side * root.x, root.y + up, root.z},
                                        {side * tip.x, tip.y + 0.4 * up, tip.z},
                                        {side * tip.x, tip.y + 0.4 * up, tip.z + tipChord},
                                        {side * root.x, root.y + up, root.z + rootChord}};
  };
  builder.Block(outline(-thickness), outline(thickness), paint);
}

}  // namespace

world::ObjectModel PlainAircraft() {
  Builder builder;
  builder.Body({{-2.75, -0.05, 0.02, 0.02}, {-2.7, -0.05, 0.14, 0.14}, {-2.45, -0.05, 0.2, 0.2}}, kRed);
  builder.Body({{-2.45, -0.05, 0.42, 0.38},
                {-1.6, 0.0, 0.55, 0.55},
                {-0.6, 0.05, 0.6, 0.62},
                {0.8, 0.08, 0.55, 0.56},
                {2.2, 0.15, 0.32, 0.36},
                {4.6, 0.25, 0.08, 0.14}},
               kWhite);
  builder.Body(
      {{-1.35, 0.4, 0.42, 0.1}, {-0.75, 0.52, 0.48, 0.3}, {0.5, 0.52, 0.46, 0.3}, {1.2, 0.45, 0.3, 0.1}},
      kGlass);
  for (const double side : {-1.0, 1.0}) {
    Wing(builder, side, {0.3, 0.74, -0.9}, 1.55, {5.1, 0.95, -0.65}, 1.1, 0.09, kWhite);
    Wing(builder, side, {4.3, 0.92, -0.69}, 1.19, {5.15, 0.96, -0.64}, 1.09, 0.1, kRed);
    Wing(builder, side, {0.05, 0.3, 3.75}, 0.95, {1.7, 0.32, 3.95}, 0.65, 0.05, kWhite);
    builder.Box({side * 1.25 - 0.08, -1.25, -0.65}, {side * 1.25 + 0.08, -0.85, -0.2}, kBlack);
    Wing(builder, side, {0.4, -0.35, -0.5}, 0.22, {1.25, -1.0, -0.5}, 0.18, 0.04, kWhite);
  }
  builder.Box({-0.07, -1.25, -1.4}, {0.07, -0.85, -1.0}, kBlack);
  builder.Box({-0.04, -0.9, -1.25}, {0.04, -0.4, -1.15}, kHull);
  builder.Block({{{-0.05, 0.3, 3.5}, {0.05, 0.3, 3.5}, {0.05, 0.3, 4.75}, {-0.05, 0.3, 4.75}}},
                {{{-0.03, 1.6, 4.3}, {0.03, 1.6, 4.3}, {0.03, 1.6, 4.95}, {-0.03, 1.6, 4.95}}}, kRed);
  builder.Box({-1.0, -0.12, -2.62}, {1.0, 0.02, -2.6}, kBlack);
  return builder.Done();
}

world::ObjectModel ShipModel() {
  using world::Deck;
  constexpr double kLong = Deck::kLength / 2.0;
  constexpr double kWide = Deck::kWidth / 2.0;
  Builder builder;
  const auto outline = [](double y, double bow, double wide, double stern) {
    return std::array<world::Vector, 4>{
        world::Vector{-wide, y, bow}, {wide, y, bow}, {wide, y, stern}, {-wide, y, stern}};
  };
  builder.Block(outline(-Deck::kHeight - 2.0, -kLong + 22.0, kWide - 9.0, kLong - 12.0),
                outline(-0.6, -kLong, kWide, kLong), kHull);
  builder.Block(outline(-0.6, -kLong, kWide, kLong), outline(0.0, -kLong, kWide, kLong), kDeckGrey);
  for (int stripe = 0; stripe < 12; ++stripe) {
    const double z = -kLong + 10.0 + 19.0 * stripe;
    builder.Box({-0.6, 0.02, z}, {0.6, 0.06, z + 10.0}, kWhite);
  }
  builder.Box({kWide - 9.0, 0.0, -10.0}, {kWide - 1.5, 11.0, 26.0}, kHull);
  builder.Box({kWide - 8.0, 11.0, -4.0}, {kWide - 2.5, 16.0, 12.0}, kWhite);
  builder.Box({kWide - 5.7, 16.0, 2.0}, {kWide - 5.1, 27.0, 2.6}, kBlack);
  return builder.Done();
}

}  // namespace sim
