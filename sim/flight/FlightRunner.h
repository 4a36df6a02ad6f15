// Walks a flight's steps and expectations as the frames go by, and tells of them.
#pragma once

#include "flight/Flight.h"

namespace sim {

class Narrator;

class FlightRunner {
 public:
  FlightRunner(Flight flightToFly, Narrator& flightNarrator);

  // To be called once for each frame, in order.
  void CarryOutSteps(int frame);
  // Likewise, and with the moments before the first frame and behind the last.
  void CheckExpectations(int moment);

 private:
  Flight flight;
  Narrator& narrator;
  std::size_t nextStep = 0;
  std::size_t nextExpectation = 0;
};

}  // namespace sim
