// Walks a flight's steps and expectations as the frames go by, and tells of them.
#pragma once

#include "flight/Flight.h"

namespace sim {

class Log;
class Narrator;

class FlightRunner {
 public:
  // The expectations are told of by their places in the flight.
  FlightRunner(Flight flightToFly, const Log& simulatorLog, Narrator& flightNarrator);

  // To be called once for each frame, in order.
  void CarryOutSteps(int frame);
  // Likewise, and with kAtEnd and kAfterShutdown.
  void CheckExpectations(int moment);

 private:
  Flight flight;
  const Log& log;
  Narrator& narrator;
  std::size_t nextStep = 0;
  std::size_t nextExpectation = 0;
};

}  // namespace sim
