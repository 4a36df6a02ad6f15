// She sails clockwise, and is north of the middle of her course at the beginning.
#include "world/terrain/Deck.h"

#include <cmath>

#include "world/Angles.h"

namespace sim::world {
namespace {

constexpr double kFarDegrees = 0.01;  // more than the deck is long, in latitude or longitude

}  // namespace

Deck::Deck(const Place& centreOfCourse) : centre(centreOfCourse) { SetTime(0.0); }

void Deck::SetTime(double seconds) {
  const double angle = std::fmod(kSpeed / kCourseRadius * seconds, 2.0 * std::numbers::pi);
  position =
      Moved(centre, {.north = kCourseRadius * std::cos(angle), .east = kCourseRadius * std::sin(angle)});
  position.altitude = kHeight;
  heading = NormalHeading(ToDegrees(angle) + 90.0);
}

bool Deck::Covers(const Place& place) const {
  if (!(std::abs(place.latitude - position.latitude) < kFarDegrees)) return false;
  if (!(std::abs(place.longitude - position.longitude) < kFarDegrees)) return false;
  const GroundOffset offset = OffsetBetween(position, place);
  const double sine = std::sin(ToRadians(heading));
  const double cosine = std::cos(ToRadians(heading));
  const double ahead = offset.north * cosine + offset.east * sine;
  const double aside = offset.east * cosine - offset.north * sine;
  return std::abs(ahead) <= kLength / 2.0 && std::abs(aside) <= kWidth / 2.0;
}

GroundOffset Deck::VelocityAt(const Place& place) const {
  const GroundOffset fromCentre = OffsetBetween(centre, place);
  constexpr double kTurnRate = kSpeed / kCourseRadius;  // radians per second
  return {.north = -kTurnRate * fromCentre.east, .east = kTurnRate * fromCentre.north};
}

}  // namespace sim::world
