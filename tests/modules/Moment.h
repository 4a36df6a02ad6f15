// A scripted plugin has no behaviour of its own: at each call that it gets it sends the host a Moment, and
// the test answers with what the plugin is to do. The answer runs inside the plugin's call, so with the
// plugin as the calling plugin; what it registers are functions of the plugin's own module.
#pragma once

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"

struct Moment {
  const char* plugin = nullptr;  // the name of its folder, or of its loose file without the ending
  // "start", "enable", "disable", "stop", "message", "loop", "read" or "changed"; of a plugin with a global
  // object also "construct" and "destroy".
  const char* call = nullptr;
  int result = 0;                         // what the plugin will return
  void (*act)(Moment& moment) = nullptr;  // set by the test, run by the plugin

  // For registering with the library; they report "loop", "read" and "changed".
  VYRAFlightLoop_f flightLoop = nullptr;
  VYRAReadInt_f readInt = nullptr;
  VYRADataChanged_f changed = nullptr;

  // Throws an exception of a type of the plugin's own, derived from std::exception.
  void (*fail)() = nullptr;

  // Of "start": the buffers, filled already.
  char *outName = nullptr, *outSignature = nullptr, *outDescription = nullptr;

  // Of "message".
  int from = 0, message = 0;
  void* param = nullptr;
};

enum { kMomentMessage = 9001 };  // to the host, with a Moment as parameter
