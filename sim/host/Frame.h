// One frame: what the simulator does, and calls, in which order.
#pragma once

#include "report/Histogram.h"

namespace sim {

// Flies the frame with this number, the first being 1, at so many frames per simulated second. The wall
// time of each of its two flight-loop passes is added to the times. The library carries out a reload at the
// end of a pass, so the time of such a pass has it in it.
void FlyFrame(int frame, double rate, Histogram& passes);

}  // namespace sim
