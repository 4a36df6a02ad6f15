// Plugins' modules that stay in memory after the library has closed them, so that a leak checker at the end
// of the process can still say whose code allocated what was left.
#pragma once

namespace sim {

// Holds every plugin's module that is open now until the process ends. A module that is opened again after
// this finds its variables as it left them.
void KeepModules();

}  // namespace sim
