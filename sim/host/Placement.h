// Putting the user's aircraft somewhere, and the services that ask for it.
#pragma once

#include <string>

#include "VYRAHost.h"

namespace sim {

void FillPlacementServices(VYRAHostServices& services);

// Puts it on the runway of an airport, by its ident; false, and told in the log, when there is none.
bool PlaceAtAirport(const std::string& ident);

// Puts it on the deck of the ship.
void PlaceOnShip();

// Puts it back to where it was placed last, whole again.
void PlaceAgain();

// To be called after each placing: moves the origin of local metres when the aircraft is far from it, and
// tells plugins of both by messages.
void TellPlaced();

}  // namespace sim
