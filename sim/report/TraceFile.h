// A flight as a file in the Trace Event format, which Perfetto's viewer and chrome://tracing open: a row of
// frames, a row for each plugin with its calls, and marks for what the simulator did.
//
// Events collect in the CostBlock and are written between frames. Each write leaves whole events in the file,
// so a trace that ends early still opens in the viewers, which do without the closing bracket; with End() it
// is valid JSON.
#pragma once

#include <string>
#include <string_view>

#include "report/CostBlock.h"

namespace sim {

class TraceFile {
 public:
  // Makes the file. Throws InputError.
  explicit TraceFile(const std::string& fileName);
  ~TraceFile();
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;

  // Whether events should be written now: between frames, and inside one.
  static bool IsHalfFull(const CostBlock& costs) { return costs.eventCount > kMostTraceEvents / 2; }
  static bool IsNearlyFull(const CostBlock& costs) {
    return costs.eventCount >= kMostTraceEvents - kMostOpenCalls - 1;
  }
  void WriteEvents(CostBlock& costs) const;

  // A line across all rows, now.
  void WriteMark(CostBlock& costs, std::string_view text, Nanoseconds now) const;

  // Writes what is left and the rows' names, and closes the array, once. May be called in a process that
  // shares the block and the file with the one that wrote before.
  void End(CostBlock& costs) const;

 private:
  // False when it cannot be written.
  bool Write(std::string_view text) const;
  void Append(CostBlock& costs, std::string_view text) const;

  int file;
};

}  // namespace sim
