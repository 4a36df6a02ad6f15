#include "flight/steps/Steps.h"
#include "host/Packages.h"

namespace sim {
namespace {

Outcome Unload() {
  if (!IsUserAircraftLoaded()) return {false, "no aircraft is loaded that could be unloaded"};
  return {true, UnloadUserAircraft()};
}

Effect Read(const Entry& /*entry*/, const FlightContext& /*context*/) { return Unload; }

}  // namespace

StepWord UnloadAircraftStep() {
  return {{.key = TrueKey("unloadAircraft", "calls event 8, then takes plane 0's model away"), .others = {}},
          Read};
}

}  // namespace sim
