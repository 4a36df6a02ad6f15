// Walks a flight's steps and expectations as the frames go by, tells of them and enters them in the report.
#pragma once

#include "flight/Flight.h"
#include "report/Report.h"

namespace sim {

class Log;
class Narrator;

class FlightRunner {
 public:
  // Enters all expectations in the report, as not reached.
  FlightRunner(Flight flightToFly, const Log& simulatorLog, Narrator& flightNarrator, Report& flightReport);

  // To be called once for each frame, in order.
  void CarryOutSteps(int frame);
  // Likewise, and with kAtEnd and kAfterShutdown.
  void CheckExpectations(int moment);

 private:
  Flight flight;
  const Log& log;
  Narrator& narrator;
  Report& report;
  std::size_t nextStep = 0;
  std::size_t nextExpectation = 0;
};

}  // namespace sim
