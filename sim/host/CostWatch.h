// Measuring the plugins' costs in a flight: the library's calls and the simulator's frames, as they begin and
// end, timed.
#pragma once

#include <string_view>

namespace sim {

struct CostBlock;
class TraceFile;

// From now on. The trace may be null; both must outlive the flight.
void StartMeasuring(CostBlock& costs, TraceFile* trace);
// No call is measured any more; the trace is ended.
void StopMeasuring();

// What was measured until now; null while nothing is.
const CostBlock* MeasuredCosts();

// A frame, while this lasts. One that an exception ends is in the trace, and does not count.
class MeasuredFrame {
 public:
  explicit MeasuredFrame(int frame);
  ~MeasuredFrame();
  MeasuredFrame(const MeasuredFrame&) = delete;
  MeasuredFrame& operator=(const MeasuredFrame&) = delete;

 private:
  int exceptions;
};

// Marks this moment in the trace, if there is one.
void MarkInTrace(std::string_view text);

}  // namespace sim
