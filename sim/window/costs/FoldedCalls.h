// A frame's calls for a reader: many in a row that are alike, as the accessors of datarefs often are, are one
// line.
#pragma once

#include <span>
#include <vector>

#include "window/costs/FrameHistory.h"

namespace sim {

struct FoldedCall {
  RecordedCall first;
  int times = 1;
  Nanoseconds duration = 0;  // of all of them
  Nanoseconds own = 0;
};

// Calls that follow each other at one depth, of one plugin and kind, and without calls inside them, become
// one. `calls` as in RecordedFrame.
std::vector<FoldedCall> FoldCalls(std::span<const RecordedCall> calls);

}  // namespace sim
