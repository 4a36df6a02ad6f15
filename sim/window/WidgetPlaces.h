// Where the widgets of the menu bar and of the panels are: for whoever drives the window from outside, as
// tests do. With a file's name in the environment variable VYRA_SIM_WIDGETS, each frame that is drawn writes
// it anew: a line "frame number", and one for each widget that was drawn, "left top right bottom name", in
// the window's pixels with y downward.
#pragma once

#include <string_view>

namespace sim {

// Names the item that was drawn last, as in "Commands/press sim/throttle/full".
void MarkWidget(std::string_view panel, std::string_view name);

// A field that was drawn last, once by its name and once with what stands in it, as in "Commands/search" and
// "Commands/search: throttle".
void MarkField(std::string_view panel, std::string_view name, std::string_view text);

// To be called when all of a frame is drawn.
void WriteWidgetPlaces();

}  // namespace sim
