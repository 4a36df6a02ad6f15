// The walk over a flight.
#include "flight/FlightRunner.h"

#include <fmt/format.h>

#include <utility>

#include "host/CostWatch.h"
#include "report/Event.h"
#include "report/Narrator.h"

namespace sim {

FlightRunner::FlightRunner(Flight flightToFly, Narrator& flightNarrator)
    : flight(std::move(flightToFly)), narrator(flightNarrator) {}

void FlightRunner::CarryOutSteps(int frame) {
  for (; nextStep < flight.steps.size() && flight.steps[nextStep].frame == frame; ++nextStep) {
    const Step& step = flight.steps[nextStep];
    const Outcome outcome = step.effect();
    if (!outcome.succeeded) TellEvent(StepFailed{{.frame = frame, .line = step.line, .text = outcome.text}});
    MarkInTrace(outcome.text);
    narrator.Tell(frame, outcome.succeeded ? outcome.text : "FAILED  " + outcome.text);
  }
}

void FlightRunner::CheckExpectations(int moment) {
  const std::vector<Expectation>& all = flight.expectations;
  for (; nextExpectation < all.size() && all[nextExpectation].moment == moment; ++nextExpectation) {
    const Expectation& expectation = all[nextExpectation];
    const Finding finding = expectation.claim.check();
    TellEvent(
        ExpectationSettled{.index = expectation.index,
                           .holds = finding.holds,
                           .found = finding.found,
                           .coversLoadFailures = finding.holds && expectation.claim.coversLoadFailures});
    narrator.Tell(moment, fmt::format("{}  {} (found {})", finding.holds ? "ok    " : "FAILED",
                                      expectation.claim.text, finding.found));
  }
}

}  // namespace sim
