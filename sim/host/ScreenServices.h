// The services of drawing in two dimensions, over the screen model, and the drawing steps of a frame.
#pragma once

#include "VYRAHost.h"

namespace sim {

void FillScreenServices(VYRAHostServices& services);

// Goes through the drawing of a frame. Nothing of the simulator's own is drawn.
void DrawFrame();

}  // namespace sim
