#include "world/World.h"

#include <filesystem>
#include <utility>

#include "world/files/TextFile.h"
#include "world/navigation/NavigationFile.h"

namespace sim {
namespace {

constexpr const char* kNavigationFile = "Resources/navigation.csv";
constexpr double kFarFromReference = 50'000.0;  // metres
constexpr double kLowestCircuit = 350.0;        // metres
constexpr double kBetweenCircuits = 100.0;

// The airports around which AI planes fly: three in the neighbourhood of home.
world::AiPlane MakeAiPlane(int number) {
  world::Place middle = world::Moved(world::kHome, {.north = 1'500.0 * (number - 1), .east = 3'000.0});
  middle.altitude = kLowestCircuit + kBetweenCircuits * number;
  return world::AiPlane(middle);
}

}  // namespace

std::vector<std::string> World::Open(const std::string& systemFolder) {
  systemPath = systemFolder;
  navigation =
      world::NavigationDatabase(world::ParseNavigation(world::OwnNavigationText(), "navigation.csv"));
  scenery = world::SceneryLibrary(systemFolder);
  objects.SetFolder(systemFolder);
  std::vector<std::string> problems = scenery.Read();
  const std::string file = systemFolder + kNavigationFile;
  if (std::filesystem::exists(file)) {
    try {
      navigation = world::NavigationDatabase(world::ParseNavigation(world::ReadTextFile(file), file));
    } catch (const world::FileError& error) {
      problems.emplace_back(error.what());
    }
  }
  terrain = world::Terrain(navigation.AirportPlaces());
  for (int number = 0; number < kAiPlanes; ++number)
    aiPlanes[static_cast<std::size_t>(number)] = MakeAiPlane(number);
  return problems;
}

void World::SteerToGpsDestination() {
  const world::NavAid* const destination = navigation.Get(gpsDestination);
  if (!fliesToGpsDestination || destination == nullptr) return;
  aircraft.autopilot.targetHeading = world::WayBetween(aircraft.motion.place, destination->place).heading;
}

void World::Advance(int toFrame, double toSeconds) {
  const double seconds = toSeconds - elapsedSeconds;
  frame = toFrame;
  elapsedSeconds = toSeconds;
  if (!std::exchange(stepsOnce, false) && isPaused) return;
  terrain.SetTime(toSeconds);
  SteerToGpsDestination();
  aircraft.Advance(seconds, terrain, weather);
  for (int plane = 1; plane <= kAiPlanes && plane < activePlanes; ++plane) {
    world::AiPlane& aiPlane = aiPlanes[static_cast<std::size_t>(plane - 1)];
    if (aiPlane.isFlownBySimulator) aiPlane.Advance(seconds);
  }
}

bool World::PlaceAtAirport(const std::string& ident) {
  const int number = navigation.FindExactly(world::kAirport, ident, aircraft.motion.place);
  const world::NavAid* const airport = navigation.Get(number);
  if (airport == nullptr) return false;
  aircraft.PutOnGround(airport->place, airport->heading, terrain);
  placedLast = world::SituationOf(aircraft, weather);
  isPlacedOnShip = false;
  return true;
}

void World::PlaceOnShip() {
  aircraft.PutOnGround(terrain.Ship().Position(), terrain.Ship().Heading(), terrain);
  isPlacedOnShip = true;
}

void World::FlyToEntry(int index) {
  flightPlan.SetDestination(index);
  gpsDestination = flightPlan.Get(flightPlan.Destination()).navAid;
}

void World::PlaceAgain() {
  if (isPlacedOnShip) return PlaceOnShip();
  world::Apply(placedLast, aircraft);
  weather = placedLast.weather;
}

void World::Enter(const world::Situation& situation) {
  placedLast = situation;
  isPlacedOnShip = false;
  PlaceAgain();
}

bool World::MoveLocalFrame() {
  const world::Place& place = aircraft.motion.place;
  if (world::WayBetween(localFrame.Reference(), place).metres < kFarFromReference) return false;
  localFrame = world::LocalFrame(place);
  return true;
}

}  // namespace sim
