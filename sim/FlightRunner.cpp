// The walk over a flight.
#include "FlightRunner.h"

#include <fmt/format.h>

#include <utility>

#include "Expectations.h"
#include "Log.h"
#include "Narrator.h"
#include "Steps.h"

namespace sim {

FlightRunner::FlightRunner(Flight flightToFly, const Log& simulatorLog, Narrator& flightNarrator)
    : flight(std::move(flightToFly)), log(simulatorLog), narrator(flightNarrator) {}

void FlightRunner::CarryOutSteps(int frame) {
  for (; nextStep < flight.steps.size() && flight.steps[nextStep].frame == frame; ++nextStep) {
    const Outcome outcome = CarryOut(flight.steps[nextStep].action);
    if (!outcome.succeeded) ++failures;
    narrator.Tell(frame, outcome.succeeded ? outcome.text : "FAILED  " + outcome.text);
  }
}

void FlightRunner::CheckExpectations(int moment) {
  const std::vector<Expectation>& all = flight.expectations;
  for (; nextExpectation < all.size() && all[nextExpectation].frame == moment; ++nextExpectation) {
    const Verdict verdict = Check(all[nextExpectation].claim, log);
    ++(verdict.holds ? held : failures);
    narrator.Tell(moment, fmt::format("{}  {} (found {})", verdict.holds ? "ok    " : "FAILED", verdict.claim,
                                      verdict.found));
  }
}

}  // namespace sim
