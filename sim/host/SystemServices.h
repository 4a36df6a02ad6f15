// The services that belong to no subsystem: time, paths, versions, language, messages and the log.
#pragma once

#include <functional>
#include <span>
#include <string>

#include "VYRAHost.h"

namespace sim {

// gLog must be set while the services are in use.
void FillSystemServices(VYRAHostServices& services);

// Shows a user what the library says; without a window nobody does.
struct UserDisplay {
  std::function<void(std::span<const std::string> lines)> showMessage;
  std::function<void(const std::string& text)> showStatus;
};
inline UserDisplay gUserDisplay;

// How often the library reloaded the plugins.
int CountReloads();

}  // namespace sim
