// What the command line asks for.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/PluginChoice.h"
#include "report/CostOptions.h"
#include "report/LastEnd.h"
#include "view/PictureOptions.h"

namespace sim {

// What comes of a module that changed during the flight.
enum class OnChange { Nothing, Reload, StartOver };

struct FlightOptions {
  std::string systemPath;  // with or without a "/" at its end
  int frames = 0;
  double rate = 0.0;       // frames per simulated second
  std::string logFile;     // empty: standard error
  std::string flightFile;  // empty: nothing happens but the frames
  std::string reportFile;  // empty: none
  std::string junitFile;   // likewise
  bool realTime = false;   // rather than as fast as possible
  bool hasWindow = false;  // flown by hand in a window, in real time, until that is closed
  OnChange onChange = OnChange::Nothing;
  CostOptions costs;
  PluginChoice plugins;
  PictureOptions pictures;
  bool isSupervised = true;
  double stallLimit = 0.0;         // seconds that a call into a plugin may take; 0 for any
  bool wantsCore = false;          // a flight that crashes leaves a core file
  bool keepsModules = false;       // plugins' modules stay in memory when they are closed at the end
  std::function<void()> atTheEnd;  // called after the last frame, while the plugins are still there
  std::optional<LastEnd> lastEnd;  // in a window the user is asked whether to leave that plugin out
  std::string stateFolder;         // where a bad end is remembered; empty: nowhere
};

}  // namespace sim
