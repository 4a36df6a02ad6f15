// The walk over a flight.
#include "flight/FlightRunner.h"

#include <fmt/format.h>

#include <utility>

#include "flight/Expectations.h"
#include "flight/Steps.h"
#include "host/CostWatch.h"
#include "report/Event.h"
#include "report/Log.h"
#include "report/Narrator.h"

namespace sim {

FlightRunner::FlightRunner(Flight flightToFly, const Log& simulatorLog, Narrator& flightNarrator)
    : flight(std::move(flightToFly)), log(simulatorLog), narrator(flightNarrator) {}

void FlightRunner::CarryOutSteps(int frame) {
  for (; nextStep < flight.steps.size() && flight.steps[nextStep].frame == frame; ++nextStep) {
    const Outcome outcome = CarryOut(flight.steps[nextStep].action);
    if (!outcome.succeeded) TellEvent(StepFailed{{.frame = frame, .line = 0, .text = outcome.text}});
    MarkInTrace(outcome.text);
    narrator.Tell(frame, outcome.succeeded ? outcome.text : "FAILED  " + outcome.text);
  }
}

void FlightRunner::CheckExpectations(int moment) {
  const std::vector<Expectation>& all = flight.expectations;
  for (; nextExpectation < all.size() && all[nextExpectation].frame == moment; ++nextExpectation) {
    const Verdict verdict = Check(all[nextExpectation].claim, log);
    TellEvent(ExpectationSettled{.index = nextExpectation,
                                 .holds = verdict.holds,
                                 .found = verdict.found,
                                 .coversLoadFailures = false});
    narrator.Tell(moment, fmt::format("{}  {} (found {})", verdict.holds ? "ok    " : "FAILED", verdict.claim,
                                      verdict.found));
  }
}

}  // namespace sim
