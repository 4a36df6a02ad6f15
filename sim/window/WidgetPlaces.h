// Where the widgets of the menu bar and of the panels are: for whoever drives the window from outside, as
// tests do. With a file's name in the environment variable VYRA_SIM_WIDGETS, each frame in which something
// moved writes it anew, with a line for each widget that was drawn: "left top right bottom name", in the
// window's pixels with y downward.
#pragma once

#include <string_view>

namespace sim {

// Names the item that was drawn last, as in "Commands/press sim/throttle/full".
void MarkWidget(std::string_view panel, std::string_view name);

// To be called when all of a frame is drawn.
void WriteWidgetPlaces();

}  // namespace sim
