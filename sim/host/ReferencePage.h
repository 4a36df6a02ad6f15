// The page of the documentation that lists the simulator's own datarefs, commands, keys and buttons, made
// from the tables that they are published from.
#pragma once

#include <string>

namespace sim {

// Markdown: docs/simulator-datarefs.md.
std::string ReferencePage();

}  // namespace sim
