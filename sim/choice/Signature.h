// The signature of a plugin that is not loaded: only the plugin itself can tell it.
#pragma once

#include <string>

namespace sim {

// Flies the plugin of this module for one frame, by itself, in a process of its own whose output goes nowhere
// and over a simulator folder that has nothing else in it. Empty when it does not start there, or keeps the
// flight waiting for more than a few seconds.
std::string SignatureOf(const std::string& module);

}  // namespace sim
