// Which plugins a flight is flown with, by patterns of the user's (choice/PluginPattern.h).
#pragma once

#include <string>
#include <vector>

namespace sim {

struct PluginChoice {
  bool safeMode = false;          // PluginAdmin alone
  std::vector<std::string> skip;  // these are passed over; wins over `only`
  std::vector<std::string> only;  // all others are passed over, unless this is empty
};

// Whether a module is passed over by it.
bool PassesOver(const PluginChoice& choice, const std::string& module);

// Has the library pass over the others from now on. Each of them is told of when the library comes to it.
void FlyWith(const PluginChoice& choice);

bool IsPassedOver(const std::string& module);

}  // namespace sim
