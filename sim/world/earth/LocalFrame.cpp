// GeographicLib's frame, with its axes named anew.
#include "world/earth/LocalFrame.h"

#include <cmath>

#include "world/Angles.h"

namespace sim::world {

LocalFrame::LocalFrame(const Place& reference)
    : cartesian(reference.latitude, reference.longitude, 0.0),
      sineOfReference(std::sin(ToRadians(reference.latitude))),
      cosineOfReference(std::cos(ToRadians(reference.latitude))) {}

Place LocalFrame::Reference() const {
  return {.latitude = cartesian.LatitudeOrigin(), .longitude = cartesian.LongitudeOrigin(), .altitude = 0.0};
}

Vector LocalFrame::ToLocal(const Place& place) const {
  double east = 0.0;
  double north = 0.0;
  double up = 0.0;
  cartesian.Forward(place.latitude, place.longitude, place.altitude, east, north, up);
  return {east, up, -north};
}

Place LocalFrame::ToPlace(const Vector& local) const {
  Place place;
  cartesian.Reverse(local.x, -local.z, local.y, place.latitude, place.longitude, place.altitude);
  return place;
}

LocalFrame::Directions LocalFrame::DirectionsAt(const Place& place) const {
  const double latitude = ToRadians(place.latitude);
  const double sine = std::sin(latitude);
  const double cosine = std::cos(latitude);
  const double turn = ToRadians(place.longitude - cartesian.LongitudeOrigin());
  const double sineOfTurn = std::sin(turn);
  const double cosineOfTurn = std::cos(turn);
  // A direction by its parts along the reference's east, north and up.
  const auto local = [](double east, double north, double up) { return Vector{east, up, -north}; };
  return {
      .east = local(cosineOfTurn, sineOfReference * sineOfTurn, -cosineOfReference * sineOfTurn),
      .up = local(cosine * sineOfTurn, sine * cosineOfReference - cosine * sineOfReference * cosineOfTurn,
                  sine * sineOfReference + cosine * cosineOfReference * cosineOfTurn),
      .north = local(-sine * sineOfTurn, cosine * cosineOfReference + sine * sineOfReference * cosineOfTurn,
                     cosine * sineOfReference - sine * cosineOfReference * cosineOfTurn)};
}

}  // namespace sim::world
