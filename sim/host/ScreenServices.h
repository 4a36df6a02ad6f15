// The services of the screen's surface: texts, boxes, fonts, the mouse.
#pragma once

#include "VYRAHost.h"

namespace sim {

void FillScreenServices(VYRAHostServices& services);

}  // namespace sim
