// The plugin autopilot: flies a heading, an altitude and a speed that its window's knobs set. A model for
// plugins that take commands, write the simulator's datarefs, and have a window for the mouse.
//
// A knob turns by its step with a click on its left or right half and with the wheel, and follows a drag up
// or down.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>

#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAGraphics.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAUtilities.h"

namespace {

constexpr int kKnobWidth = 90;
constexpr int kKnobHeight = 50;
constexpr int kLeft = 40;
constexpr int kBottom = 40;
constexpr int kFont = 0;
constexpr float kThrottlePerSpeed = 0.004F;  // opened in a second, for each metre per second that is missing

struct Knob {
  const char* name;  // of its dataref
  const char* label;
  float step;
  float low;
  float high;
  float value;

  void Turn(float steps) { Set(value + steps * step); }
  // One that goes round counts headings.
  void Set(float wanted) {
    if (!std::isfinite(wanted)) return;
    const bool goesRound = high == 360.0F;
    value = goesRound ? std::fmod(std::fmod(wanted, high) + high, high) : std::clamp(wanted, low, high);
  }
};

enum KnobIndex { kHeading, kAltitude, kSpeed };
using Knobs = std::array<Knob, 3>;

constexpr Knobs kNewKnobs = {{
    {"autopilot/heading_deg", "HEADING", 1.0F, 0.0F, 360.0F, 0.0F},
    {"autopilot/altitude_m", "ALTITUDE", 10.0F, 0.0F, 5000.0F, 500.0F},
    {"autopilot/speed_m_per_s", "SPEED", 1.0F, 30.0F, 80.0F, 50.0F},
}};

Knobs gKnobs = kNewKnobs;
bool gIsEngaged = false;
float gThrottle = 0.0F;
Knob* gDragged = nullptr;  // between a press and its release
int gDragY = 0;
bool gWasDragged = false;

VYRADataRef gTargetHeading, gTargetAltitude, gHoldsHeading, gHoldsAltitude, gSpeed, gThrottleRatio;

void OnError(const char* message) {
  VYRADebugString((std::string("[Autopilot]: ") + message + "\n").c_str());
}

// ---- Flying ----------------------------------------------------------------------------------------------

void Engage(bool engage) {
  gIsEngaged = engage;
  if (engage) gThrottle = VYRAGetDataf(gThrottleRatio);
  VYRASetDatai(gHoldsHeading, engage ? 1 : 0);
  VYRASetDatai(gHoldsAltitude, engage ? 1 : 0);
}

// In each frame, as the user may move the throttle and the simulator's targets too.
float Fly(float sinceLastCall, float /*now*/, int /*counter*/, void* /*refcon*/) {
  if (!gIsEngaged) return -1.0F;
  VYRASetDataf(gTargetHeading, gKnobs[kHeading].value);
  VYRASetDataf(gTargetAltitude, gKnobs[kAltitude].value);
  const float missing = gKnobs[kSpeed].value - VYRAGetDataf(gSpeed);
  gThrottle = std::clamp(gThrottle + missing * kThrottlePerSpeed * sinceLastCall, 0.0F, 1.0F);
  VYRASetDataf(gThrottleRatio, gThrottle);
  return -1.0F;
}

// ---- Commands --------------------------------------------------------------------------------------------

int OnEngage(VYRACommandRef /*command*/, int phase, void* /*refcon*/) {
  if (phase == VYRA_COMMAND_PHASE_BEGIN) Engage(!gIsEngaged);
  return 0;
}

// The simulator's own switch for its autopilot turns this one off as well, and then does what it does.
int OnOff(VYRACommandRef /*command*/, int phase, void* /*refcon*/) {
  if (phase == VYRA_COMMAND_PHASE_BEGIN) gIsEngaged = false;
  return 1;
}

// While the speed is held, the keys for the throttle turn the knob, and the simulator does not act on them.
int OnThrottle(VYRACommandRef /*command*/, int phase, void* refcon) {
  if (!gIsEngaged) return 1;
  if (phase == VYRA_COMMAND_PHASE_BEGIN) gKnobs[kSpeed].Turn(refcon == nullptr ? -1.0F : 1.0F);
  return 0;
}

// ---- The window ------------------------------------------------------------------------------------------

Knob* KnobAt(VYRAWindowID window, int x) {
  int left = 0;
  VYRAGetWindowGeometry(window, &left, nullptr, nullptr, nullptr);
  const int index = (x - left) / kKnobWidth;
  return index >= 0 && index < static_cast<int>(gKnobs.size()) ? &gKnobs[static_cast<std::size_t>(index)]
                                                               : nullptr;
}

void Draw(VYRAWindowID window, void* /*refcon*/) {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  VYRAGetWindowGeometry(window, &left, &top, &right, &bottom);
  VYRADrawTranslucentDarkBox(left, top, right, bottom);
  float white[] = {1.0F, 1.0F, 1.0F};
  float green[] = {0.3F, 1.0F, 0.3F};
  int x = left + 8;
  for (const Knob& knob : gKnobs) {
    std::string label = knob.label;
    VYRADrawString(white, x, bottom + 30, label.data(), nullptr, kFont);
    char value[16];
    std::snprintf(value, sizeof(value), "%.0f", static_cast<double>(knob.value));
    VYRADrawString(gIsEngaged ? green : white, x, bottom + 8, value, nullptr, kFont);
    x += kKnobWidth;
  }
}

// A press takes the mouse, so that its drags and its release come here wherever it moves.
int Click(VYRAWindowID window, int x, int y, int mouseStatus, void* /*refcon*/) {
  if (mouseStatus == VYRA_MOUSE_DOWN) {
    gDragged = KnobAt(window, x);
    gDragY = y;
    gWasDragged = false;
  } else if (gDragged != nullptr && y != gDragY) {
    gDragged->Turn(static_cast<float>(y - gDragY));
    gDragY = y;
    gWasDragged = true;
  }
  if (mouseStatus == VYRA_MOUSE_UP && gDragged != nullptr && !gWasDragged) {
    int left = 0;
    VYRAGetWindowGeometry(window, &left, nullptr, nullptr, nullptr);
    gDragged->Turn((x - left) % kKnobWidth < kKnobWidth / 2 ? -1.0F : 1.0F);
  }
  if (mouseStatus == VYRA_MOUSE_UP) gDragged = nullptr;
  return 1;
}

int Wheel(VYRAWindowID window, int x, int /*y*/, int /*wheel*/, int clicks, void* /*refcon*/) {
  if (Knob* const knob = KnobAt(window, x)) knob->Turn(static_cast<float>(clicks));
  return 1;
}

void MakeWindow() {
  VYRAWindowCreateParams params{};
  params.structSize = sizeof(params);
  params.left = kLeft;
  params.bottom = kBottom;
  params.right = kLeft + kKnobWidth * static_cast<int>(gKnobs.size());
  params.top = kBottom + kKnobHeight;
  params.visible = 1;
  params.draw = Draw;
  params.handleMouseClick = Click;
  params.handleMouseWheel = Wheel;
  VYRACreateWindowEx(&params);
}

void Publish(Knob& knob) {
  VYRARegisterDataAccessor(
      knob.name, VYRA_TYPE_FLOAT, 1, nullptr, nullptr,
      [](void* read) { return static_cast<Knob*>(read)->value; },
      [](void* written, float value) { static_cast<Knob*>(written)->Set(value); }, nullptr, nullptr, nullptr,
      nullptr, nullptr, nullptr, nullptr, nullptr, &knob, &knob);
}

}  // namespace

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::snprintf(outName, VYRA_PLUGIN_INFO_SIZE, "Autopilot");
  std::snprintf(outSignature, VYRA_PLUGIN_INFO_SIZE, "org.skyvora.autopilot");
  std::snprintf(outDescription, VYRA_PLUGIN_INFO_SIZE, "Flies a heading, an altitude and a speed.");
  VYRASetErrorCallback(OnError);

  gKnobs = kNewKnobs;
  gIsEngaged = false;
  gDragged = nullptr;
  gTargetHeading = VYRAFindDataRef("sim/aircraft/target_heading_deg");
  gTargetAltitude = VYRAFindDataRef("sim/autopilot/target_altitude_m");
  gHoldsHeading = VYRAFindDataRef("sim/autopilot/holds_heading");
  gHoldsAltitude = VYRAFindDataRef("sim/autopilot/holds_altitude");
  gSpeed = VYRAFindDataRef("sim/aircraft/speed_m_per_s");
  gThrottleRatio = VYRAFindDataRef("sim/aircraft/throttle_ratio");
  for (Knob& knob : gKnobs) Publish(knob);
  VYRARegisterDataAccessor(
      "autopilot/is_engaged", VYRA_TYPE_INT, 1, [](void*) { return gIsEngaged ? 1 : 0; },
      [](void*, int value) { Engage(value != 0); }, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  VYRARegisterFlightLoopCallback(Fly, -1.0F, nullptr);
  VYRARegisterCommandHandler(VYRACreateCommand("autopilot/engage", "Let the autopilot fly, or no longer"),
                             OnEngage, 1, nullptr);
  VYRARegisterCommandHandler(VYRAFindCommand("sim/autopilot/off"), OnOff, 1, nullptr);
  VYRARegisterCommandHandler(VYRAFindCommand("sim/throttle/increase"), OnThrottle, 1, &gKnobs);
  VYRARegisterCommandHandler(VYRAFindCommand("sim/throttle/decrease"), OnThrottle, 1, nullptr);
  MakeWindow();
  return 1;
}

// Nothing of a disabled plugin is called: it must not leave the simulator flying for it.
void VyPluginDisable() {
  if (gIsEngaged) Engage(false);
}
