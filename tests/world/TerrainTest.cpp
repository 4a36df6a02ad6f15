#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "world/Angles.h"
#include "world/navigation/NavigationDatabase.h"
#include "world/navigation/NavigationFile.h"
#include "world/terrain/NaturalHeight.h"
#include "world/terrain/Terrain.h"

namespace sim::world {
namespace {

Terrain OwnTerrain() {
  return Terrain(NavigationDatabase(ParseNavigation(OwnNavigationText(), "navigation.csv")).AirportPlaces());
}

double AltitudeAt(const Terrain& terrain, const Place& place) { return terrain.GroundAt(place)->altitude; }

// The normal as the ground around shows it: from four heights in local metres.
Vector NormalByDifferences(const Terrain& terrain, const LocalFrame& frame, const Vector& at) {
  constexpr double kStep = 0.5;
  const auto height = [&](double x, double z) {
    return terrain.Probe(frame, {at.x + x, at.y, at.z + z})->location.y;
  };
  const double toEast = (height(kStep, 0.0) - height(-kStep, 0.0)) / (2.0 * kStep);
  const double toSouth = (height(0.0, kStep) - height(0.0, -kStep)) / (2.0 * kStep);
  return Unit({-toEast, 1.0, -toSouth});
}

TEST(Terrain, HasLandAndWaterAndTheHeightsThatItAlwaysHad) {
  int wet = 0;
  int dry = 0;
  for (double latitude = 52.4; latitude < 56.2; latitude += 0.05)
    for (double longitude = 6.7; longitude < 13.5; longitude += 0.1)
      ++(NaturalHeightAt({.latitude = latitude, .longitude = longitude, .altitude = 0.0}).metres > 0.0 ? dry
                                                                                                       : wet);
  EXPECT_GT(wet, 1'000);
  EXPECT_GT(dry, 1'000);
  // Another number here would move every airport and every flight that was ever recorded.
  EXPECT_NEAR(NaturalHeightAt(kHome).metres, 24.104, 0.001);
  EXPECT_NEAR(NaturalHeightAt({.latitude = 55.25, .longitude = 9.0, .altitude = 0.0}).metres, 143.230, 0.001);
}

TEST(Terrain, NormalsAreThoseOfTheSlopesAround) {
  const Terrain terrain = OwnTerrain();
  const LocalFrame frame(kHome);
  double steepest = 1.0;
  for (double x = -60'000.0; x <= 60'000.0; x += 1'700.0) {
    const Terrain::Hit hit = *terrain.Probe(frame, {x, 0.0, 0.37 * x + 2'100.0});
    EXPECT_NEAR(Length(hit.normal), 1.0, 1e-12);
    if (hit.isWet) continue;
    EXPECT_LT(Length(hit.normal - NormalByDifferences(terrain, frame, hit.location)), 2e-4) << x;
    steepest = std::min(steepest, hit.normal.y);
  }
  EXPECT_LT(steepest, 0.9995) << "no slope was met";
}

TEST(Terrain, IsLevelAroundAirportsAndSmoothAtTheRim) {
  const Place field{.latitude = 54.3, .longitude = 10.1, .altitude = 60.0};
  const Terrain terrain({field});
  EXPECT_EQ(AltitudeAt(terrain, Moved(field, {.north = 800.0, .east = -800.0})), 60.0);
  EXPECT_EQ(terrain.GroundAt(field)->normal.y, 1.0);
  const Place outside = Moved(field, {.north = -3'600.0, .east = 0.0});
  EXPECT_EQ(AltitudeAt(terrain, outside), std::max(0.0, NaturalHeightAt(outside).metres));
  const LocalFrame frame(kHome);
  for (double metres = 1'250.0; metres < 3'500.0; metres += 250.0) {
    const Vector local = frame.ToLocal(Moved(field, {.north = -metres, .east = 0.3 * metres}));
    const Terrain::Hit hit = *terrain.Probe(frame, local);
    if (hit.isWet) continue;
    EXPECT_LT(Length(hit.normal - NormalByDifferences(terrain, frame, hit.location)), 2e-4) << metres;
  }
}

TEST(Terrain, ProbesLookStraightDownFromAnyHeight) {
  const Terrain terrain = OwnTerrain();
  const LocalFrame frame(kHome);
  for (const double y : {-20'000.0, 0.0, 30'000.0}) {
    const Terrain::Hit hit = *terrain.Probe(frame, {-40'000.0, y, 45'000.0});
    EXPECT_EQ(hit.location.x, -40'000.0);
    EXPECT_EQ(hit.location.z, 45'000.0);
    const Place place = frame.ToPlace(hit.location);
    EXPECT_NEAR(place.altitude, AltitudeAt(terrain, place), 1e-3);
  }
}

TEST(Terrain, ProbesMissBeyondTheWorld) {
  const Terrain terrain = OwnTerrain();
  const LocalFrame frame(kHome);
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  constexpr double kHuge = std::numeric_limits<float>::max();
  for (const Vector& point :
       {Vector{300'000.0, 0.0, 0.0}, Vector{0.0, 0.0, -300'000.0}, Vector{kNoNumber, 0.0, 0.0},
        Vector{0.0, kNoNumber, 0.0}, Vector{kHuge, kHuge, kHuge}})
    EXPECT_FALSE(terrain.Probe(frame, point));
  EXPECT_TRUE(terrain.Probe(frame, {0.0, 0.0, 0.0}));
}

TEST(Terrain, TheDeckMovesAsItsVelocitySays) {
  Terrain terrain = OwnTerrain();
  const LocalFrame frame(kHome);
  constexpr double kSeconds = 0.5;
  for (const double time : {0.0, 100.0, 1'234.0}) {
    terrain.SetTime(time);
    const Place aboard = Moved(terrain.Ship().Position(), {.north = 10.0, .east = 5.0});
    const Terrain::Hit before = *terrain.Probe(frame, frame.ToLocal(aboard));
    EXPECT_FALSE(before.isWet);
    EXPECT_NEAR(Length(before.velocity), Deck::kSpeed, 0.1);

    const Vector middle = frame.ToLocal(terrain.Ship().Position());
    const Terrain::Hit atMiddle = *terrain.Probe(frame, middle);
    terrain.SetTime(time + kSeconds);
    const Vector moved = frame.ToLocal(terrain.Ship().Position());
    EXPECT_LT(Length(moved - middle - kSeconds * atMiddle.velocity), 0.01);
  }
}

TEST(Terrain, TheShipIsAtSeaAllTheWayRound) {
  Terrain terrain = OwnTerrain();
  for (int time = 0; time < 3'200; time += 20) {
    terrain.SetTime(time);
    const Place& ship = terrain.Ship().Position();
    EXPECT_TRUE(terrain.GroundAt(ship)->isDeck);
    EXPECT_LT(NaturalHeightAt(ship).metres, -5.0);
    const double ahead = ToRadians(terrain.Ship().Heading());
    const auto at = [&](double metres) {
      return terrain.GroundAt(
          Moved(ship, {.north = metres * std::cos(ahead), .east = metres * std::sin(ahead)}));
    };
    EXPECT_TRUE(at(Deck::kLength / 2.0 - 1.0)->isDeck);
    EXPECT_FALSE(at(Deck::kLength / 2.0 + 1.0)->isDeck);
    EXPECT_TRUE(at(Deck::kLength / 2.0 + 1.0)->isWet);
  }
}

}  // namespace
}  // namespace sim::world
