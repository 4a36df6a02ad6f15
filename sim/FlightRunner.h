// Walks a flight's steps and expectations as the frames go by, tells of them and counts.
#pragma once

#include "Flight.h"

namespace sim {

class Log;
class Narrator;

class FlightRunner {
 public:
  FlightRunner(Flight flightToFly, const Log& simulatorLog, Narrator& flightNarrator);

  // To be called once for each frame, in order.
  void CarryOutSteps(int frame);
  // Likewise, and with kAtEnd and kAfterShutdown.
  void CheckExpectations(int moment);

  int HeldCount() const { return held; }
  // Expectations that did not hold and steps that could not be carried out.
  int FailureCount() const { return failures; }

 private:
  Flight flight;
  const Log& log;
  Narrator& narrator;
  size_t nextStep = 0;
  size_t nextExpectation = 0;
  int held = 0;
  int failures = 0;
};

}  // namespace sim
