// For plugins that have a flight loop and nothing else.
#pragma once

#include <cstring>

#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

// The start of a plugin: what it is called, and its flight loop, called in each pass.
inline int StartWithLoop(char* outName, char* outSignature, char* outDescription, const char* name,
                         const char* signature, VYRAFlightLoop_f loop) {
  std::strcpy(outName, name);
  std::strcpy(outSignature, signature);
  std::strcpy(outDescription, "Flown by tests.");
  VYRARegisterFlightLoopCallback(loop, -1.0F, nullptr);
  return 1;
}
