#include "host/Placement.h"

#include <fmt/core.h>

#include "host/Events.h"
#include "report/Log.h"
#include "report/News.h"
#include "world/World.h"

namespace sim {

void FillPlacementServices(VYRAHostServices& services) {
  services.PlaceUserAtAirport = [](const char* code) { PlaceAtAirport(code != nullptr ? code : ""); };
  // Whatever the two arguments: there is one way to begin anew.
  services.ReinitUsersPlane = [](int /*argument1*/, int /*argument2*/) { PlaceAgain(); };
}

bool PlaceAtAirport(const std::string& ident) {
  if (!gWorld.PlaceAtAirport(ident)) {
    gLog->Write(fmt::format("Failed: there is no airport {}\n", ident));
    return false;
  }
  gNews.push_back(fmt::format("aircraft placed at the airport {}", ident));
  TellPlaced();
  return true;
}

void PlaceOnShip() {
  gWorld.PlaceOnShip();
  gNews.emplace_back("aircraft placed on the ship");
  TellPlaced();
}

void PlaceAgain() {
  gWorld.PlaceAgain();
  gNews.emplace_back("aircraft placed anew");
  TellPlaced();
}

void TellPlaced() {
  if (gWorld.MoveLocalFrame()) TellLibrary(VYRA_EVENT_BROADCAST_104, nullptr);
  TellLibrary(VYRA_EVENT_BROADCAST_103, nullptr);
}

}  // namespace sim
