// Physics is checked against what must be true of any aircraft: balances, conserved quantities, geometry.
#include <gtest/gtest.h>

#include <cmath>

#include "world/Angles.h"
#include "world/aircraft/AiPlane.h"
#include "world/aircraft/Aircraft.h"
#include "world/aircraft/Situation.h"
#include "world/files/TextFile.h"
#include "world/terrain/NaturalHeight.h"

namespace sim::world {
namespace {

constexpr double kFrame = 1.0 / 60.0;
constexpr Place kField{.latitude = 54.3, .longitude = 10.1, .altitude = 24.0};

class AircraftTest : public testing::Test {
 protected:
  void Fly(double seconds) {
    for (int frame = 0; frame < std::lround(seconds / kFrame); ++frame) {
      time += kFrame;
      terrain.SetTime(time);
      aircraft.Advance(kFrame, terrain, weather);
    }
  }

  double time = 0.0;
  Terrain terrain{{kField}};
  Weather weather;
  Aircraft aircraft;
};

TEST(Attitude, GivesBackItsAnglesAndTurnsVectorsBothWays) {
  for (const EulerAngles& angles :
       {EulerAngles{10.0, 20.0, 30.0}, EulerAngles{200.0, -60.0, -170.0}, EulerAngles{359.0, 89.0, 1.0}}) {
    const Attitude attitude(angles);
    EXPECT_NEAR(attitude.Angles().heading, angles.heading, 1e-9);
    EXPECT_NEAR(attitude.Angles().pitch, angles.pitch, 1e-9);
    EXPECT_NEAR(attitude.Angles().roll, angles.roll, 1e-9);
    const Vector vector{1.0, -2.0, 3.0};
    EXPECT_LT(Length(attitude.ToBody(attitude.ToEarth(vector)) - vector), 1e-12);
  }
  // Nose east and up by 30 degrees: forward points east and up.
  const Vector nose = Attitude({.heading = 90.0, .pitch = 30.0, .roll = 0.0}).ToEarth({1.0, 0.0, 0.0});
  EXPECT_LT(Length(nose - Vector{0.0, std::cos(ToRadians(30.0)), -0.5}), 1e-12);
  Attitude turned;
  for (int step = 0; step < 900; ++step) turned.Turn({0.0, 0.0, ToRadians(0.1)}, 1.0);
  EXPECT_NEAR(turned.Angles().heading, 90.0, 1e-3);
}

TEST_F(AircraftTest, SteadyFlightIsABalanceOfForces) {
  aircraft.autopilot.targetHeading = 0.0;
  aircraft.autopilot.holdsAltitude = true;
  Fly(120.0);
  const Forces& forces = aircraft.Now();
  EXPECT_NEAR(aircraft.motion.place.altitude, 300.0, 10.0);
  EXPECT_NEAR(aircraft.Climb(), 0.0, 0.1);
  EXPECT_NEAR(forces.lift + forces.thrust * std::sin(forces.angleOfAttack), forces.mass * GravityAt(54.3),
              0.01 * forces.mass * 9.81);
  EXPECT_NEAR(forces.thrust * std::cos(forces.angleOfAttack), forces.drag, 0.03 * forces.drag);
  EXPECT_NEAR(forces.loadFactor, 1.0, 0.01);
}

TEST_F(AircraftTest, AlwaysFliesTheSameAndHardlyDependsOnTheRate) {
  Aircraft other;
  Aircraft atHigherRate;
  Fly(10.0);
  for (int frame = 0; frame < 600; ++frame) other.Advance(kFrame, terrain, weather);
  for (int frame = 0; frame < 2'400; ++frame) atHigherRate.Advance(kFrame / 4.0, terrain, weather);
  EXPECT_EQ(other.motion.place.latitude, aircraft.motion.place.latitude);
  EXPECT_EQ(other.motion.place.altitude, aircraft.motion.place.altitude);
  EXPECT_NEAR(atHigherRate.motion.place.altitude, aircraft.motion.place.altitude, 0.5);
  EXPECT_LT(WayBetween(atHigherRate.motion.place, aircraft.motion.place).metres, 2.0);
}

TEST_F(AircraftTest, EachControlDoesWhatItIsFor) {
  aircraft.autopilot.holdsHeading = aircraft.autopilot.holdsPitch = false;
  const Aircraft start = aircraft;
  const auto after = [&](double Controls::*control, double value) {
    aircraft = start;
    aircraft.controls.*control = value;
    Fly(1.0);
    return aircraft;
  };
  EXPECT_GT(after(&Controls::elevator, 0.3).Angles().pitch,
            after(&Controls::elevator, -0.3).Angles().pitch + 5);
  EXPECT_GT(after(&Controls::aileron, 0.3).Angles().roll, 10.0);
  EXPECT_LT(after(&Controls::aileron, -0.3).Angles().roll, -10.0);
  EXPECT_GT(after(&Controls::rudder, 0.5).motion.rates.z,
            after(&Controls::rudder, -0.5).motion.rates.z + 0.05);
  EXPECT_GT(after(&Controls::throttle, 1.0).Now().airspeed,
            after(&Controls::throttle, 0.0).Now().airspeed + 1);
  EXPECT_GT(after(&Controls::trim, 0.2).Angles().pitch, after(&Controls::trim, -0.2).Angles().pitch + 2);
}

TEST_F(AircraftTest, TheAutopilotHoldsWhatItIsAskedFor) {
  aircraft.autopilot.targetHeading = 230.0;
  aircraft.autopilot.holdsAltitude = true;
  aircraft.autopilot.targetAltitude = 450.0;
  aircraft.controls.throttle = 0.8;
  Fly(240.0);
  EXPECT_NEAR(aircraft.Angles().heading, 230.0, 1.0);
  EXPECT_NEAR(aircraft.motion.place.altitude, 450.0, 5.0);
  EXPECT_NEAR(aircraft.Angles().roll, 0.0, 0.5);
}

TEST_F(AircraftTest, StallsWhenTheNoseIsHeldUpWithoutPower) {
  aircraft.autopilot.holdsPitch = false;
  aircraft.controls.throttle = 0.0;
  aircraft.controls.elevator = 1.0;
  bool stalled = false;
  for (int second = 0; second < 20 && !stalled; ++second) {
    Fly(1.0);
    stalled = aircraft.Now().isStalled;
  }
  EXPECT_TRUE(stalled);
}

TEST_F(AircraftTest, StopsItsEngineWithoutFuel) {
  aircraft.motion.fuel = 0.02;
  Fly(10.0);
  EXPECT_EQ(aircraft.motion.fuel, 0.0);
  EXPECT_EQ(aircraft.Now().thrust, 0.0);
}

TEST_F(AircraftTest, WindCarriesItAndDoesNotChangeItsAirspeed) {
  aircraft.autopilot.targetHeading = 0.0;
  weather = {.windFrom = 270.0, .windSpeed = 10.0};
  Fly(60.0);
  EXPECT_NEAR(aircraft.motion.velocity.y, 10.0, 0.5);
  EXPECT_NEAR(aircraft.Now().airspeed, 50.0, 5.0);
}

TEST_F(AircraftTest, StandsOnTheGroundTakesOffAndLands) {
  aircraft.PutOnGround(kField, 70.0, terrain);
  Fly(5.0);
  EXPECT_TRUE(aircraft.IsOnGround());
  EXPECT_LT(aircraft.GroundSpeed(), 0.01);
  EXPECT_LT(WayBetween(kField, aircraft.motion.place).metres, 0.1);

  aircraft.controls.throttle = 1.0;
  Fly(25.0);
  EXPECT_NEAR(aircraft.Angles().heading, 70.0, 1.0);
  aircraft.autopilot.holdsPitch = aircraft.autopilot.holdsHeading = true;
  aircraft.autopilot.targetPitch = 6.0;
  aircraft.autopilot.targetHeading = 70.0;
  Fly(8.0);
  EXPECT_FALSE(aircraft.IsOnGround());
  EXPECT_FALSE(aircraft.HasCrashed());

  aircraft.PutInFlight({.latitude = 54.3, .longitude = 10.095, .altitude = 40.0}, 70.0, 38.0);
  aircraft.controls.throttle = 0.0;
  aircraft.autopilot.targetPitch = 4.0;
  Fly(14.0);
  EXPECT_TRUE(aircraft.IsOnGround());
  aircraft.controls.brake = 1.0;
  aircraft.autopilot.holdsPitch = false;
  aircraft.controls.elevator = 0.0;
  Fly(20.0);
  EXPECT_FALSE(aircraft.HasCrashed());
  EXPECT_LT(aircraft.GroundSpeed(), 0.5);
}

TEST_F(AircraftTest, StandsOnTheMovingDeck) {
  terrain.SetTime(0.0);
  aircraft.PutOnGround(terrain.Ship().Position(), terrain.Ship().Heading(), terrain);
  Fly(30.0);
  EXPECT_TRUE(aircraft.IsOnGround());
  EXPECT_TRUE(terrain.Ship().Covers(aircraft.motion.place));
  EXPECT_NEAR(aircraft.GroundSpeed(), Deck::kSpeed, 0.2);
}

TEST_F(AircraftTest, LiesWhereItHitTheGroundOrTheWater) {
  aircraft.autopilot.targetPitch = -30.0;
  Fly(60.0);
  EXPECT_TRUE(aircraft.HasCrashed());
  EXPECT_EQ(aircraft.GroundSpeed(), 0.0);
  const Place where = aircraft.motion.place;
  Fly(1.0);
  EXPECT_EQ(aircraft.motion.place.longitude, where.longitude);
  aircraft.PutInFlight(kField, 0.0, 50.0);
  EXPECT_FALSE(aircraft.HasCrashed());

  aircraft.PutInFlight({.latitude = 54.34, .longitude = 10.31, .altitude = 3.0}, 0.0, 30.0);
  Fly(10.0);
  EXPECT_TRUE(aircraft.HasCrashed());
}

TEST_F(AircraftTest, NumbersThatNoAircraftHasDoNotSpoilTheFlight) {
  aircraft.description.pitch.perAngle = 10.0;
  aircraft.description.mass.pitchInertia = 1.0;
  Fly(30.0);
  EXPECT_TRUE(std::isfinite(aircraft.motion.place.altitude));
  EXPECT_TRUE(std::isfinite(aircraft.Angles().heading));
}

TEST(AiPlane, FliesRoundAndRoundAndComesBackFromWhereItWasPut) {
  const Place middle{.latitude = 54.3, .longitude = 10.1, .altitude = 400.0};
  AiPlane plane(middle);
  double turned = 0.0;
  double before = plane.angles.heading;
  const auto fly = [&](int seconds) {
    for (int frame = 0; frame < seconds * 60; ++frame) {
      plane.Advance(kFrame);
      turned += TurnBetween(before, plane.angles.heading);
      before = plane.angles.heading;
      EXPECT_LT(std::abs(plane.angles.roll), 30.0);
    }
  };
  fly(1'000);
  EXPECT_GT(turned, 720.0);
  EXPECT_LT(WayBetween(middle, plane.place).metres, 4'500.0);

  plane.place = {.latitude = 54.6, .longitude = 10.1, .altitude = 1'000.0};
  fly(1'500);
  EXPECT_LT(WayBetween(middle, plane.place).metres, 4'500.0);
  EXPECT_NEAR(plane.place.altitude, 400.0, 1.0);
}

TEST(AircraftFile, ReadsNumbersAndNamesTheLineOfWhatIsWrong) {
  const AircraftDescription description = ParseAircraft(
      R"({"name": "Kite", "model": "kite.obj", "mass": {"empty_kg": 500}, "wheels": [{"position_m": [0, 0, 1]}]})",
      "kite.acf");
  EXPECT_EQ(description.name, "Kite");
  EXPECT_EQ(description.mass.empty, 500.0);
  EXPECT_EQ(description.wing.area, AircraftDescription().wing.area);
  EXPECT_EQ(description.wheels.size(), 1U);
  const auto problem = [](const std::string& text) -> std::string {
    try {
      ParseAircraft(text, "kite.acf");
    } catch (const FileError& error) {
      return error.what();
    }
    return "none";
  };
  EXPECT_EQ(problem("{\"name\": \"Kite\",\n\"mass\": {\n\"empty_kg\": -5}}"),
            "kite.acf:3: this must be a number from 1 to 1e+06");
  EXPECT_EQ(problem("{\"name\": \"Kite\",\n\"mass\": {\n\"empty_lb\": 5}}"),
            "kite.acf:3: there is no \"empty_lb\" here");
  EXPECT_EQ(problem("{\"name\": \"Kite\",\n\"wheels\": [\n{\"position_m\": [1, 2]}]}"),
            "kite.acf:3: this must be three numbers: forward, right, down");
  EXPECT_EQ(problem("{\n}"), "kite.acf:1: \"name\" is missing");
  EXPECT_EQ(problem("The Trainer: a single-engined aeroplane."),
            "kite.acf:1: syntax error while parsing value - invalid literal; last read: 'T'");
}

TEST(Situation, ComesBackFromAFileAsItWas) {
  Aircraft aircraft;
  aircraft.controls.rudder = 0.25;
  aircraft.autopilot.holdsHeading = false;
  aircraft.motion.fuel = 33.0;
  Terrain terrain{{}};
  for (int frame = 0; frame < 100; ++frame) aircraft.Advance(kFrame, terrain, {});
  Situation situation = SituationOf(aircraft, {.windFrom = 200.0, .windSpeed = 3.0});
  situation.aircraft = "Aircraft/Kite/Kite.acf";
  const Situation read = ParseSituation(ToText(situation), "s");
  EXPECT_EQ(ToText(read), ToText(situation));
  EXPECT_EQ(read.weather.windFrom, 200.0);

  Aircraft other;
  Apply(read, other);
  for (int frame = 0; frame < 100; ++frame) {
    aircraft.Advance(kFrame, terrain, {});
    other.Advance(kFrame, terrain, {});
  }
  EXPECT_NEAR(other.motion.place.altitude, aircraft.motion.place.altitude, 0.05);
  EXPECT_LT(WayBetween(other.motion.place, aircraft.motion.place).metres, 0.05);
}

TEST(Situation, RefusesADamagedFileByItsLine) {
  const std::string good = ToText(SituationOf(Aircraft(), {}));
  const auto problem = [&](const std::string& from, const std::string& to) -> std::string {
    std::string text = good;
    text.replace(text.find(from), from.size(), to);
    try {
      ParseSituation(text, "s");
    } catch (const FileError& error) {
      return error.what();
    }
    return "none";
  };
  EXPECT_EQ(problem("\"fuel_kg\": 80.0", "\"fuel_kg\": \"full\""), "s:16: this must be a number");
  EXPECT_EQ(problem("\"fuel_kg\": 80.0", "\"fuel_lb\": 80.0"), "s:16: there is no \"fuel_lb\" here");
  EXPECT_EQ(problem("  \"fuel_kg\": 80.0,\n", ""), "s:1: \"fuel_kg\" is missing");
  EXPECT_EQ(problem("\"holds_pitch\": true", "\"holds_pitch\": 1"), "s:29: this must be true or false");
}

}  // namespace
}  // namespace sim::world
