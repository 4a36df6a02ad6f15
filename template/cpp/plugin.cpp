// A stopwatch that starts with the plugin. It publishes the dataref "stopwatch/flown_s", makes the command
// "stopwatch/reset", and writes how high the aircraft came to the log. Replace what it does; keep what every
// plugin needs: the three names, the error callback, and an object with all state that lives from
// VyPluginStart to VyPluginStop.
#include <VYRADataAccess.h>
#include <VYRAPlugin.h>
#include <VYRAProcessing.h>
#include <VYRAUtilities.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>

namespace {

class Stopwatch {
 public:
  // What is registered here is removed when the plugin is unloaded.
  Stopwatch() {
    VYRARegisterDataAccessor("stopwatch/flown_s", VYRA_TYPE_FLOAT, 0, nullptr, nullptr, ReadFlown, nullptr,
                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, this,
                             nullptr);
    VYRARegisterFlightLoopCallback(Measure, -1.0F, this);
    VYRARegisterCommandHandler(VYRACreateCommand("stopwatch/reset", "Start the stopwatch anew"), Reset, 1,
                               this);
  }

 private:
  static float ReadFlown(void* refcon) { return static_cast<Stopwatch*>(refcon)->flown; }

  // Called in each frame, as it returns -1; 2.0F would be two seconds later.
  static float Measure(float /*sinceLastCall*/, float now, int /*counter*/, void* refcon) {
    Stopwatch& self = *static_cast<Stopwatch*>(refcon);
    self.highest = std::max(self.highest, VYRAGetDataf(self.altitude));
    self.flown = now - self.start;
    return -1.0F;
  }

  static int Reset(VYRACommandRef /*command*/, int phase, void* refcon) {
    Stopwatch& self = *static_cast<Stopwatch*>(refcon);
    if (phase != VYRA_COMMAND_PHASE_BEGIN) return 1;
    char line[80];
    std::snprintf(line, sizeof line, "stopwatch: %.1f s flown, at most %.0f m high\n", self.flown,
                  self.highest);
    VYRADebugString(line);
    self.start = VYRAGetElapsedTime();
    self.flown = self.highest = 0.0F;
    return 1;
  }

  VYRADataRef altitude = VYRAFindDataRef("sim/aircraft/altitude_m");  // of the simulator
  float start = VYRAGetElapsedTime();
  float flown = 0.0F;
  float highest = 0.0F;
};

std::unique_ptr<Stopwatch> gStopwatch;

// Hears of every wrong call that this plugin makes. The message has no line end.
void OnError(const char* message) { VYRADebugString((std::string("stopwatch: ") + message + "\n").c_str()); }

// Writes a text into one of the buffers of VyPluginStart.
void Fill(char* buffer, const char* text) { std::snprintf(buffer, VYRA_PLUGIN_INFO_SIZE, "%s", text); }

}  // namespace

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  Fill(outName, "Stopwatch");
  Fill(outSignature, "org.example.stopwatch");  // yours alone: begin with a domain of yours, backwards
  Fill(outDescription, "Measures how long a flight lasts.");
  VYRASetErrorCallback(OnError);
  gStopwatch = std::make_unique<Stopwatch>();
  return 1;
}

void VyPluginStop() { gStopwatch.reset(); }
