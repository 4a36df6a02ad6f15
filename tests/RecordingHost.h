// RecordingHost: the host that all tests share. It fills every slot of the service table, notes each call
// as a line of text and answers what a test tells it to. It knows the public interface alone, so it serves
// tests that link the built library and tests that link the library's objects.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "VYRAHost.h"

struct RecordingHost {
  RecordingHost();

  // Sets what a service returns; 0 or null otherwise. A name that is no service's throws.
  void Answer(std::string_view service, double result);

  // The noted calls of one service, in their order.
  std::vector<std::string> CallsOf(std::string_view service) const;

  // Revision 4 and version 568 at first. A test may put a function of its own into any slot.
  VYRAHostServices services = {};

  // Everything that DebugString was given, end to end.
  std::string log;

  // All other calls, as "AppendMenuItem(1|0|Fuel|0)" or "CommandButtonPress(0,1)": a bar parts the
  // arguments where one of them is text. Opaque references are shown as numbers; pointers to values,
  // functions and buffers are left out, and so is the parameter of HostReceiveMessage.
  std::vector<std::string> calls;

  std::string systemPath;  // GetSystemPath's answer
  std::string planePath;   // GetNthAircraftModel's answer for plane 0; other planes have none
  std::string planeFileName;

  // Called with each message to the host, while the sender's own call is still running.
  std::function<void(VYRAPluginID fromPlugin, int message, void* param)> onMessage;

  // Called inside each service, with the call as it is noted, or as "DebugString(text)".
  std::function<void(const std::string& call)> onCall;

  std::map<std::string, double, std::less<>> answers;  // see Answer
};

// The one host, as services have no context. `gHost = RecordingHost()` puts it back to its beginning.
extern RecordingHost gHost;
