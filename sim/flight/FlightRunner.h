// Walks a flight's steps and expectations as the frames go by, and tells of them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "flight/Flight.h"

namespace sim {

class Narrator;

// How far a step or an expectation is, and what came of it.
enum class Progress { Waiting, Running, Done, Failed };
struct ProgressOf {
  Progress progress = Progress::Waiting;
  int moment = 0;     // of what came of it
  std::string found;  // what was told of it
};

class FlightRunner {
 public:
  FlightRunner(Flight flightToFly, Narrator& flightNarrator);
  ~FlightRunner();
  FlightRunner(const FlightRunner&) = delete;
  FlightRunner& operator=(const FlightRunner&) = delete;

  // To be called once for each frame, in order.
  void CarryOutSteps(int frame);
  // Likewise, and with the moments before the first frame and behind the last.
  void CheckExpectations(int moment);
  // The last frame was flown: steps that are not done have failed. To be called before the moment "end".
  void EndSteps(int lastFrame);

  // For whoever looks on.
  const Flight& Plan() const { return flight; }
  const ProgressOf& Of(const Step& step) const { return stepProgress[step.index]; }
  const ProgressOf& Of(const Expectation& expectation) const {
    return expectationProgress[expectation.index];
  }

 private:
  // A row whose first step was reached.
  struct RunningRow {
    const StepRow* row;
    std::size_t next = 0;
    int due = 0;  // the frame of the next step
  };
  // An expectation that is not settled.
  struct OpenExpectation {
    const Expectation* expectation;
    std::optional<int> lastHeld;  // the frame
    std::string lastFound;
  };

  void CarryOut(RunningRow& row, int frame);
  void Note(const Step& step, int frame, const Outcome& outcome);
  void TellFailedStep(int frame, int line, const std::string& text);
  // True when it is settled.
  bool Look(OpenExpectation& looked, int moment);
  void Settle(const OpenExpectation& settled, int moment, bool holds);

  Flight flight;
  Narrator& narrator;
  std::vector<StepRow>::const_iterator nextRow;
  std::vector<RunningRow> running;       // in the order of the file
  std::vector<OpenExpectation> open;     // in the order of their moments
  std::vector<ProgressOf> stepProgress;  // by their index
  std::vector<ProgressOf> expectationProgress;
};

// Of the flight that is under way; null before and after.
inline const FlightRunner* gFlightRunner = nullptr;

}  // namespace sim
