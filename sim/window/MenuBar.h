// The menu bar: the menus of plugins, and behind them the simulator's own menu View.
#pragma once

#include <functional>

namespace sim {

// Draws it; `drawView` draws the lines of the menu View. An item of a plugin that is picked is asked for as a
// step, so no menu changes while it is drawn.
void DrawMenuBar(const std::function<void()>& drawView);

}  // namespace sim
