// Telling the library of an event.
#pragma once

#include "VYRAHost.h"
#include "host/FlightBoard.h"
#include "world/World.h"

namespace sim {

inline void TellLibrary(int event, void* parameter) {
  CallHook("VYRAEventHook", VYRAEventHook, event, parameter, nullptr,
           static_cast<float>(gWorld.elapsedSeconds), 0.0F);
}

}  // namespace sim
