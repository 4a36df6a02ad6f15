// The drawing of a frame.
#pragma once

namespace sim {

// Goes through the drawing steps. Between the two of a phase the simulator draws its own part of it, unless a
// plugin asked it not to.
void DrawFrame();

// The cursor that a window wanted in the frame drawn last, where the mouse was; 0 for none.
int CursorOfFrame();

}  // namespace sim
