// The panel Frame's lower half: the calls of the frame that was picked.
#pragma once

#include <vector>

#include "window/costs/FoldedCalls.h"
#include "window/costs/FrameHistory.h"

namespace sim {

struct PickedFrame {
  RecordedFrame frame;
  std::vector<FoldedCall> calls;
};

void DrawCallsOf(const PickedFrame& picked, const FrameHistory& history);

}  // namespace sim
