// Expected coordinates were computed by hand from the ellipsoid's definition, not by the code under test.
#include <gtest/gtest.h>

#include <cmath>

#include "world/Angles.h"
#include "world/earth/Atmosphere.h"
#include "world/earth/LocalFrame.h"

namespace sim::world {
namespace {

constexpr double kMillimetre = 1e-3;
constexpr Place kReference{.latitude = 54.3, .longitude = 10.1, .altitude = 0.0};

// Geocentric coordinates by the textbook, in long double.
struct Geocentric {
  long double x, y, z;
};
Geocentric GeocentricOf(const Place& place) {
  constexpr long double kA = 6378137.0L;
  constexpr long double kF = 1.0L / 298.257223563L;
  constexpr long double kE2 = kF * (2.0L - kF);
  constexpr long double kDegree = 3.14159265358979323846264L / 180.0L;
  const long double latitude = static_cast<long double>(place.latitude) * kDegree;
  const long double longitude = static_cast<long double>(place.longitude) * kDegree;
  const long double altitude = place.altitude;
  const long double n = kA / std::sqrt(1.0L - kE2 * std::sin(latitude) * std::sin(latitude));
  return {.x = (n + altitude) * std::cos(latitude) * std::cos(longitude),
          .y = (n + altitude) * std::cos(latitude) * std::sin(longitude),
          .z = (n * (1.0L - kE2) + altitude) * std::sin(latitude)};
}

// x east, y up, z south, by the textbook.
Vector LocalByTextbook(const Place& place) {
  constexpr long double kDegree = 3.14159265358979323846264L / 180.0L;
  const Geocentric origin = GeocentricOf(kReference);
  const Geocentric there = GeocentricOf(place);
  const long double dx = there.x - origin.x;
  const long double dy = there.y - origin.y;
  const long double dz = there.z - origin.z;
  const long double sinLat = std::sin(static_cast<long double>(kReference.latitude) * kDegree);
  const long double cosLat = std::cos(static_cast<long double>(kReference.latitude) * kDegree);
  const long double sinLon = std::sin(static_cast<long double>(kReference.longitude) * kDegree);
  const long double cosLon = std::cos(static_cast<long double>(kReference.longitude) * kDegree);
  return {static_cast<double>(-sinLon * dx + cosLon * dy),
          static_cast<double>(cosLat * cosLon * dx + cosLat * sinLon * dy + sinLat * dz),
          static_cast<double>(sinLat * cosLon * dx + sinLat * sinLon * dy - cosLat * dz)};
}

TEST(LocalFrame, AgreesWithTheDefinitionToAMillimetreWithin50Kilometres) {
  const LocalFrame frame(kReference);
  for (int heading = 0; heading < 360; heading += 15)
    for (const double metres : {1.0, 1'000.0, 20'000.0, 50'000.0})
      for (const double altitude : {-100.0, 0.0, 3'000.0, 12'000.0}) {
        Place place = Moved(kReference, {.north = metres * std::cos(ToRadians(heading)),
                                         .east = metres * std::sin(ToRadians(heading))});
        place.altitude = altitude;
        const Vector local = frame.ToLocal(place);
        EXPECT_LT(Length(local - LocalByTextbook(place)), kMillimetre);
        const Place back = frame.ToPlace(local);
        EXPECT_LT(Length(LocalByTextbook(back) - LocalByTextbook(place)), kMillimetre);
      }
}

TEST(LocalFrame, IsRightHandedWithXEastYUpZSouth) {
  const LocalFrame frame(kReference);
  EXPECT_LT(Length(frame.ToLocal(kReference)), kMillimetre);
  const Vector east = frame.ToLocal({.latitude = 54.3, .longitude = 10.11, .altitude = 0.0});
  const Vector north = frame.ToLocal({.latitude = 54.31, .longitude = 10.1, .altitude = 0.0});
  const Vector up = frame.ToLocal({.latitude = 54.3, .longitude = 10.1, .altitude = 100.0});
  EXPECT_GT(east.x, 600.0);
  EXPECT_LT(north.z, -1'000.0);
  EXPECT_NEAR(up.y, 100.0, kMillimetre);
  EXPECT_GT(Dot(Cross(east, up), -north), 0.0);
}

TEST(LocalFrame, SeaLevelFallsAwayFarFromTheReference) {
  const LocalFrame frame(kReference);
  const Vector there = frame.ToLocal(Moved(kReference, {.north = 0.0, .east = 50'000.0}));
  EXPECT_NEAR(there.y, -196.0, 1.0);
}

TEST(LocalFrame, DirectionsOfAPlaceAreThoseInWhichItMoves) {
  const LocalFrame frame(kReference);
  const Place place{.latitude = 55.1, .longitude = 8.2, .altitude = 500.0};
  const LocalFrame::Directions directions = frame.DirectionsAt(place);
  const auto step = [&](Place to) { return Unit(frame.ToLocal(to) - frame.ToLocal(place)); };
  Place higher = place;
  higher.altitude += 10.0;
  EXPECT_LT(Length(directions.up - step(higher)), 1e-6);
  EXPECT_LT(Length(directions.north - step(Moved(place, {.north = 10.0, .east = 0.0}))), 1e-5);
  EXPECT_LT(Length(directions.east - step(Moved(place, {.north = 0.0, .east = 10.0}))), 1e-5);
}

TEST(Earth, AMinuteOfLatitudeIsANauticalMileOrSo) {
  const Way way = WayBetween({.latitude = 54.0, .longitude = 10.0, .altitude = 0.0},
                             {.latitude = 54.0 + 1.0 / 60.0, .longitude = 10.0, .altitude = 0.0});
  EXPECT_NEAR(way.metres, 1855.2, 0.5);
  EXPECT_NEAR(way.heading, 0.0, 1e-9);
  EXPECT_NEAR(GravityAt(0.0), 9.780325, 1e-6);
  EXPECT_NEAR(GravityAt(90.0), 9.832185, 1e-6);
}

// Values of the standard's own tables.
TEST(Atmosphere, IsThatOfAStandardDay) {
  EXPECT_NEAR(AirAt(0.0).density, 1.225, 1e-4);
  EXPECT_NEAR(AirAt(5'000.0).pressure, 54'020.0, 10.0);
  EXPECT_NEAR(AirAt(5'000.0).density, 0.73612, 1e-4);
  EXPECT_NEAR(AirAt(11'000.0).temperature, 216.65, 1e-6);
  EXPECT_NEAR(AirAt(15'000.0).pressure, 12'044.0, 10.0);
  EXPECT_EQ(AirAt(-500.0).density, AirAt(0.0).density);
}

TEST(Angles, HeadingsStayBelow360) {
  EXPECT_EQ(NormalHeading(-90.0), 270.0);
  EXPECT_EQ(NormalHeading(720.0), 0.0);
  EXPECT_LT(NormalHeading(-1e-17), 360.0);
  EXPECT_EQ(TurnBetween(350.0, 10.0), 20.0);
  EXPECT_EQ(TurnBetween(10.0, 350.0), -20.0);
}

}  // namespace
}  // namespace sim::world
