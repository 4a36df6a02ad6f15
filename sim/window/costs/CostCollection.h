// The history of the flight's last frames, collected as long as somebody shows it.
#pragma once

#include "window/costs/FrameHistory.h"

namespace sim {

// Begins and ends the collection for one of those who show it: true for each that begins, false when it ends.
// Between two frames alone.
void CollectCosts(bool isShown);

// Empty until they were collected; what was collected before is kept.
const FrameHistory& CollectedCosts();

}  // namespace sim
