#include <gtest/gtest.h>

#include <map>
#include <set>

#include "world/files/TextFile.h"
#include "world/navigation/FlightPlan.h"
#include "world/navigation/NavigationFile.h"
#include "world/terrain/NaturalHeight.h"
#include "world/terrain/Terrain.h"

namespace sim::world {
namespace {

constexpr const char* kHeader =
    "type,ident,name,latitude_deg,longitude_deg,elevation_m,frequency_khz,heading_deg\n";

NavigationDatabase OwnDatabase() {
  return NavigationDatabase(ParseNavigation(OwnNavigationText(), "navigation.csv"));
}

std::string ProblemOf(const std::string& line) {
  try {
    ParseNavigation(std::string("# a comment\n") + kHeader + line, "nav.csv");
  } catch (const FileError& error) {
    return error.what();
  }
  return "none";
}

TEST(OwnNavigation, HasEveryTypeAndFitsTheGround) {
  const NavigationDatabase database = OwnDatabase();
  EXPECT_GE(database.Count(), 200);
  const Terrain terrain(database.AirportPlaces());
  std::set<std::pair<int, std::string>> idents;
  std::map<int, int> counts;
  for (int number = database.First(); number != kNoNavAid; number = database.Next(number)) {
    const NavAid& navAid = *database.Get(number);
    EXPECT_TRUE(idents.emplace(navAid.type, navAid.ident).second) << navAid.ident;
    EXPECT_TRUE(kWorldRegion.Contains(navAid.place)) << navAid.ident;
    EXPECT_EQ(navAid.frequency == 0, navAid.type == kFix) << navAid.ident;
    ++counts[navAid.type];
    if (navAid.type != kAirport) continue;
    EXPECT_FALSE(terrain.GroundAt(navAid.place)->isWet) << navAid.ident;
    EXPECT_EQ(terrain.GroundAt(navAid.place)->altitude, navAid.place.altitude) << navAid.ident;
  }
  EXPECT_EQ(counts.size(), 5U);
}

TEST(OwnNavigation, AirportsKeepTheDistanceThatTheGroundNeeds) {
  const std::vector<Place> places = OwnDatabase().AirportPlaces();
  for (std::size_t one = 0; one < places.size(); ++one)
    for (std::size_t other = 0; other < one; ++other)
      EXPECT_GT(WayBetween(places[one], places[other]).metres, 8'000.0);
}

TEST(NavigationFile, NamesTheLineOfWhatIsWrong) {
  EXPECT_EQ(ProblemOf("airport,ABCD,Abe,54,10,5,118000,90\n"), "none");
  EXPECT_EQ(ProblemOf("airport,ABCD,\"Abe, \"\"old\"\"\",54,10,5,118000,90"), "none");
  EXPECT_EQ(ProblemOf("\nheliport,ABCD,Abe,54,10,5,118000,90\n"),
            "nav.csv:4: type must be one of airport, ndb, vor, ils, fix");
  EXPECT_EQ(ProblemOf("vor,AB,Abe,54,10,5,118000\n"), "nav.csv:3: there are 7 columns, not 8");
  EXPECT_EQ(ProblemOf("vor,AB,Abe,54,10,5,1,0,0\n"), "nav.csv:3: there are 9 columns, not 8");
  EXPECT_EQ(ProblemOf("vor,AB,\"Abe,54,10,5,1,0\n"),
            "nav.csv:3: a quote is not closed, or stands inside a text");
  EXPECT_EQ(ProblemOf("vor,AB,Abe,54N,10,5,1,0\n"),
            "nav.csv:3: latitude_deg must be a number from -90 to 90");
  EXPECT_EQ(ProblemOf("vor,AB,Abe,54,200,5,1,0\n"),
            "nav.csv:3: longitude_deg must be a number from -180 to 180");
  EXPECT_EQ(ProblemOf("vor,AB,Abe,54,nan,5,1,0\n"),
            "nav.csv:3: longitude_deg must be a number from -180 to 180");
  EXPECT_EQ(ProblemOf("vor,,Abe,54,20,5,1,0\n"), "nav.csv:3: ident is empty");
  EXPECT_EQ(ProblemOf("vor,ABCDEFGH,Abe,54,20,5,1,0\n"), "nav.csv:3: ident is longer than 7 characters");
  EXPECT_THROW(ParseNavigation("", "nav.csv"), FileError);
  EXPECT_THROW(ParseNavigation("type,ident,name,latitude_deg,longitude_deg,a,b,c\n", "nav.csv"), FileError);
}

TEST(NavigationDatabase, FindsByNameIdentFrequencyPlaceAndType) {
  const NavigationDatabase database(ParseNavigation(
      std::string(kHeader) +
          "airport,AAAA,North Field,56,10,5,118000,90\nvor,BBB,North Station,55,10,5,113000,0\n"
          "airport,CCCC,South Field,53,10,5,118000,90\nvor,DDD,South Station,53,11,5,114000,0\n",
      "nav.csv"));
  EXPECT_EQ(database.FirstOfType(kOmnidirectionalRange), 1);
  EXPECT_EQ(database.LastOfType(kOmnidirectionalRange), 3);
  EXPECT_EQ(database.LastOfType(kAirport | kOmnidirectionalRange), 3);
  EXPECT_EQ(database.FirstOfType(kFix), kNoNavAid);
  EXPECT_EQ(database.Next(3), kNoNavAid);
  EXPECT_EQ(database.Next(-5), kNoNavAid);
  EXPECT_EQ(database.Find({.partOfName = "south"}), 2);
  EXPECT_EQ(database.Find({.types = kOmnidirectionalRange, .partOfName = "south"}), 3);
  EXPECT_EQ(database.Find({.partOfIdent = "DD"}), 3);
  EXPECT_EQ(database.Find({.frequency = 114'000}), 3);
  EXPECT_EQ(database.Find({.frequency = 1}), kNoNavAid);
  EXPECT_EQ(database.Find({.near = Place{.latitude = 53.1, .longitude = 10.2, .altitude = 0.0}}), 2);
  EXPECT_EQ(database.Find({.types = kAirport,
                           .frequency = 118'000,
                           .near = Place{.latitude = 58.0, .longitude = 0.0, .altitude = 0.0}}),
            0);
}

TEST(FlightPlan, HoldsAHundredEntriesAndIgnoresOthers) {
  const NavigationDatabase database = OwnDatabase();
  FlightPlan plan;
  EXPECT_EQ(plan.Count(), 0);
  plan.SetNavAid(99, 3, *database.Get(3), 1'000);
  EXPECT_EQ(plan.Count(), 100);
  EXPECT_EQ(plan.Get(50).type, kNoType);
  plan.Clear(99);
  plan.SetPlace(1, 54.0, 10.0, 2'000'000'000);
  EXPECT_EQ(plan.Get(1).altitude, FlightPlan::kHighestAltitude);
  for (const int index : {-1, 100, 1'000'000}) {
    plan.SetPlace(index, 54.0, 10.0, 0);
    plan.SetDestination(index);
    plan.Clear(index);
  }
  plan.SetPlace(3, 91.0, 10.0, 0);
  EXPECT_EQ(plan.Count(), 2);
  EXPECT_EQ(plan.Destination(), 0);
  EXPECT_EQ(plan.Get(-1).type, kNoType);
}

TEST(FlightPlan, ComesBackFromAFileAsItWas) {
  const NavigationDatabase database = OwnDatabase();
  FlightPlan plan;
  plan.SetNavAid(0, 0, *database.Get(0), 500);
  plan.SetPlace(2, 54.25, 9.5, 1'200);
  plan.SetNavAid(5, 100, *database.Get(100), -20);
  plan.SetDestination(5);
  plan.SetDisplayed(2);
  const FlightPlan read = FlightPlan::FromText(plan.ToText(), "plan", database);
  EXPECT_EQ(read.ToText(), plan.ToText());
  EXPECT_EQ(read.Get(5).navAid, 100);
  EXPECT_EQ(read.Get(5).ident, database.Get(100)->ident);
  EXPECT_EQ(read.Destination(), 5);
}

TEST(FlightPlan, RefusesADamagedFileByItsLine) {
  const NavigationDatabase database = OwnDatabase();
  FlightPlan plan;
  plan.SetNavAid(0, 0, *database.Get(0), 500);
  const std::string good = plan.ToText();
  const auto problem = [&](const std::string& from, const std::string& to) -> std::string {
    std::string text = good;
    text.replace(text.find(from), from.size(), to);
    try {
      FlightPlan::FromText(text, "plan", database);
    } catch (const FileError& error) {
      return error.what();
    }
    return "none";
  };
  EXPECT_EQ(problem("HOME", "NONE"), "plan:9: there is no airport NONE");
  EXPECT_EQ(problem("\"entry\": 0", "\"entry\": 100"), "plan:7: this must be a number from 0 to 99");
  EXPECT_EQ(problem("altitude_m", "height_m"), "plan:12: there is no \"height_m\" here");
  EXPECT_EQ(problem("plan 1", "plan 2"), "plan:2: this is not a \"Skyvora flight plan 1\"");
  EXPECT_EQ(problem("  ]", "  "), "plan:15: syntax error while parsing array - unexpected '}'; expected ']'");
}

}  // namespace
}  // namespace sim::world
