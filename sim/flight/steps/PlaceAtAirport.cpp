#include "flight/steps/Steps.h"
#include "host/Placement.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  return [ident = entry.Text("placeAtAirport")] {
    const bool isThere = PlaceAtAirport(ident);
    return Outcome{isThere, (isThere ? "aircraft put on the runway of " : "there is no airport ") + ident};
  };
}

}  // namespace

StepWord PlaceAtAirportStep() {
  return {{.key = TextKey("placeAtAirport",
                          "puts the user's aircraft on the runway of the airport with this ident"),
           .others = {}},
          Read};
}

}  // namespace sim
