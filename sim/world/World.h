// The simulated world as a whole. The library's services and accessors are plain functions, so it stands in
// one named global.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "world/aircraft/AiPlane.h"
#include "world/aircraft/Aircraft.h"
#include "world/aircraft/Situation.h"
#include "world/earth/LocalFrame.h"
#include "world/navigation/FlightPlan.h"
#include "world/navigation/NavigationDatabase.h"
#include "world/scenery/ObjectStore.h"
#include "world/scenery/Package.h"
#include "world/terrain/NaturalHeight.h"
#include "world/terrain/Terrain.h"

namespace sim {

class World {
 public:
  static constexpr int kAiPlanes = 3;

  std::string systemPath;  // ends in "/"
  double elapsedSeconds = 0.0;
  int frame = 0;  // 0 before the first
  bool isPaused = false;
  bool stepsOnce = false;  // the next frame moves a paused world on

  world::LocalFrame localFrame{world::kHome};
  world::NavigationDatabase navigation{{}};
  world::Terrain terrain{{}};
  world::Weather weather;

  std::string modelPath;  // of plane 0; empty while no aircraft is loaded
  world::Aircraft aircraft;
  bool fliesToGpsDestination = false;  // by the heading that the autopilot holds

  std::array<world::AiPlane, kAiPlanes> aiPlanes;  // planes 1 to 3
  int activePlanes = kAiPlanes + 1;                // with the user's

  world::FlightPlan flightPlan;
  int gpsDestination = world::kNoNavAid;

  world::SceneryLibrary scenery{""};
  world::ObjectStore objects;

  // Reads what lies in a simulator folder: Resources/navigation.csv, or the simulator's own navaids where
  // there is no such file or it is damaged; and the packages of scenery. Returns what is wrong, one line
  // each.
  std::vector<std::string> Open(const std::string& systemFolder);

  // Moves everything on to a frame, at a time in seconds.
  void Advance(int toFrame, double toSeconds);

  // Puts the user's aircraft on the runway of an airport, by its ident; false when there is none.
  bool PlaceAtAirport(const std::string& ident);

  // Puts the user's aircraft on the deck of the ship.
  void PlaceOnShip();

  // Puts the user's aircraft back to where it was placed last, whole again.
  void PlaceAgain();

  // Flies to an entry of the flight plan: the GPS leads to its navaid. Indexes outside of the plan are
  // ignored.
  void FlyToEntry(int index);

  // Puts the user's aircraft into a situation. Its description is changed by others.
  void Enter(const world::Situation& situation);

  // Moves the origin of local metres to the user's aircraft when that is far away; true when it was moved.
  bool MoveLocalFrame();

 private:
  void SteerToGpsDestination();

  world::Situation placedLast = world::SituationOf(aircraft, weather);
  bool isPlacedOnShip = false;  // which has sailed on since
};

inline World gWorld;

}  // namespace sim
