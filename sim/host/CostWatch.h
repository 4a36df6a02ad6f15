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

// These do nothing while nothing is measured.
void MeasureFrameBegin(int frame);
void MeasureFrameEnd();
// Marks this moment in the trace.
void MarkInTrace(std::string_view text);

}  // namespace sim
