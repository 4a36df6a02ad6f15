// The datarefs that the user wants to keep in sight: their values, and numbers over time.
#pragma once

#include "window/ValueField.h"

namespace sim {

bool IsPinned(const ValuePlace& place);
void Pin(const ValuePlace& place);
void Unpin(const ValuePlace& place);

// Draws them all; nothing while there are none. Of each number a value is kept for each frame in which this
// is called.
void DrawPinned(const char* panel);

// What was kept of the numbers is given up.
void ForgetPlots();

}  // namespace sim
