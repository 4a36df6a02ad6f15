// The plugin map: a window with the navaids around the aircraft and its flight plan, north up. The wheel
// zooms, and the command map/plan_home plans a flight to the nearest airport. A model for plugins that ask
// for navigation and draw with OpenGL of their own.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAGraphics.h"
#include "VYRANavigation.h"
#include "VYRAPlugin.h"
#include "VYRAUtilities.h"

namespace {

constexpr int kSize = 300;  // pixels
constexpr int kRight = 1260;
constexpr int kTop = 780;
constexpr int kFont = 0;
constexpr int kAirport = 1;  // the simulator's type of an airport
constexpr int kNoNavAid = -1;
constexpr float kNearest = 2000.0F;  // metres from the middle of the map to its edge
constexpr float kFarthest = 128000.0F;
constexpr float kMetresPerDegree = 111320.0F;
constexpr float kDegrees = 57.29578F;

struct Point {
  float latitude, longitude;
};

struct NavAid {
  Point place;
  int type;
  std::string ident;
};

std::vector<NavAid> gNavAids;  // all there are: they do not change in flight
float gRange = 16000.0F;
int gShown = 0;  // navaids on the map

VYRADataRef gLatitude, gLongitude, gHeading;

void OnError(const char* message) { VYRADebugString((std::string("[Map]: ") + message + "\n").c_str()); }

// ---- Navigation ------------------------------------------------------------------------------------------

NavAid Describe(int reference) {
  NavAid navAid{};
  char ident[32] = "";  // longer than the simulator's idents are
  VYRAGetNavAidInfo(reference, &navAid.type, &navAid.place.latitude, &navAid.place.longitude, nullptr,
                    nullptr, nullptr, ident, nullptr, nullptr);
  navAid.ident = ident;
  return navAid;
}

void ReadNavAids() {
  gNavAids.clear();
  for (int reference = VYRAGetFirstNavAid(); reference != kNoNavAid; reference = VYRAGetNextNavAid(reference))
    gNavAids.push_back(Describe(reference));
}

Point Here() {
  return {static_cast<float>(VYRAGetDatad(gLatitude)), static_cast<float>(VYRAGetDatad(gLongitude))};
}

// A plan of two entries: from here to the nearest airport, which is flown to.
int OnPlanHome(VYRACommandRef /*command*/, int phase, void* /*refcon*/) {
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 0;
  Point here = Here();
  const int airport = VYRAFindNavAid(nullptr, nullptr, &here.latitude, &here.longitude, nullptr, kAirport);
  if (airport == kNoNavAid) return 0;
  for (int entry = VYRACountFMSEntries() - 1; entry >= 0; --entry) VYRAClearFMSEntry(entry);
  VYRASetFMSEntryLatLon(0, here.latitude, here.longitude, 300);
  VYRASetFMSEntryInfo(1, airport, 300);
  VYRASetDestinationFMSEntry(1);
  VYRADebugString(("map: flying to " + Describe(airport).ident + "\n").c_str());
  return 0;
}

// ---- Drawing ---------------------------------------------------------------------------------------------

struct Pixel {
  float x, y;
};

// The map in the screen's pixels, around the aircraft.
struct Sheet {
  int left, top, right, bottom;
  Point centre;

  Pixel Of(Point place) const {
    const float scale = static_cast<float>(right - left) / 2.0F / gRange;
    const float east =
        (place.longitude - centre.longitude) * std::cos(centre.latitude / kDegrees) * kMetresPerDegree;
    const float north = (place.latitude - centre.latitude) * kMetresPerDegree;
    return {static_cast<float>(left + right) / 2.0F + east * scale,
            static_cast<float>(bottom + top) / 2.0F + north * scale};
  }
  bool Holds(Pixel pixel) const {
    return pixel.x >= static_cast<float>(left) && pixel.x < static_cast<float>(right) &&
           pixel.y >= static_cast<float>(bottom) && pixel.y < static_cast<float>(top);
  }
};

// The simulator's drawing state is set through the library, so that both know of it: no texture, no depth.
void DrawNavAids(const Sheet& sheet) {
  gShown = 0;
  float colour[] = {0.8F, 0.8F, 1.0F};
  for (NavAid& navAid : gNavAids) {
    const Pixel pixel = sheet.Of(navAid.place);
    if (!sheet.Holds(pixel)) continue;
    ++gShown;
    VYRASetGraphicsState(0, 1, 0, 0, 0, 0, 0);
    glPointSize(navAid.type == kAirport ? 7.0F : 4.0F);
    glColor3fv(colour);
    glBegin(GL_POINTS);
    glVertex2f(pixel.x, pixel.y);
    glEnd();
    if (navAid.type == kAirport)
      VYRADrawString(colour, static_cast<int>(pixel.x) + 6, static_cast<int>(pixel.y) - 4,
                     navAid.ident.data(), nullptr, kFont);
  }
}

void DrawPlan(const Sheet& sheet) {
  VYRASetGraphicsState(0, 1, 0, 0, 0, 0, 0);
  glColor3f(1.0F, 0.3F, 1.0F);
  glBegin(GL_LINE_STRIP);
  for (int entry = 0; entry < VYRACountFMSEntries(); ++entry) {
    int type = 0;
    Point place{};
    VYRAGetFMSEntryInfo(entry, &type, nullptr, nullptr, nullptr, &place.latitude, &place.longitude);
    if (type == 0) continue;  // empty
    const Pixel pixel = sheet.Of(place);
    glVertex2f(std::clamp(pixel.x, static_cast<float>(sheet.left), static_cast<float>(sheet.right)),
               std::clamp(pixel.y, static_cast<float>(sheet.bottom), static_cast<float>(sheet.top)));
  }
  glEnd();
}

// A triangle that points to where the nose does.
void DrawAircraft(const Sheet& sheet) {
  const Pixel middle = sheet.Of(sheet.centre);
  const float heading = VYRAGetDataf(gHeading) / kDegrees;
  glColor3f(1.0F, 1.0F, 0.3F);
  glBegin(GL_TRIANGLES);
  for (const float turn : {0.0F, 2.5F, -2.5F})
    glVertex2f(middle.x + 9.0F * std::sin(heading + turn), middle.y + 9.0F * std::cos(heading + turn));
  glEnd();
}

void Draw(VYRAWindowID window, void* /*refcon*/) {
  Sheet sheet{0, 0, 0, 0, Here()};
  VYRAGetWindowGeometry(window, &sheet.left, &sheet.top, &sheet.right, &sheet.bottom);
  VYRADrawTranslucentDarkBox(sheet.left, sheet.top, sheet.right, sheet.bottom);
  DrawNavAids(sheet);
  DrawPlan(sheet);
  DrawAircraft(sheet);
  char range[32];
  std::snprintf(range, sizeof(range), "MAP %.0f km", static_cast<double>(gRange) / 1000.0);
  float white[] = {1.0F, 1.0F, 1.0F};
  VYRADrawString(white, sheet.left + 8, sheet.bottom + 8, range, nullptr, kFont);
}

int Wheel(VYRAWindowID /*window*/, int /*x*/, int /*y*/, int /*wheel*/, int clicks, void* /*refcon*/) {
  gRange = std::clamp(gRange * std::exp2(static_cast<float>(-clicks)), kNearest, kFarthest);
  return 1;
}

// Moves the window with the mouse, as nothing else takes its clicks.
int Click(VYRAWindowID window, int x, int y, int mouseStatus, void* /*refcon*/) {
  static int lastX = 0;
  static int lastY = 0;
  if (mouseStatus == VYRA_MOUSE_DRAG) {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    VYRAGetWindowGeometry(window, &left, &top, &right, &bottom);
    VYRASetWindowGeometry(window, left + x - lastX, top + y - lastY, right + x - lastX, bottom + y - lastY);
  } else if (mouseStatus == VYRA_MOUSE_DOWN) {
    VYRABringWindowToFront(window);
  }
  lastX = x;
  lastY = y;
  return 1;
}

}  // namespace

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::snprintf(outName, VYRA_PLUGIN_INFO_SIZE, "Map");
  std::snprintf(outSignature, VYRA_PLUGIN_INFO_SIZE, "org.skyvora.map");
  std::snprintf(outDescription, VYRA_PLUGIN_INFO_SIZE, "Shows where the aircraft is.");
  VYRASetErrorCallback(OnError);

  gRange = 16000.0F;
  gLatitude = VYRAFindDataRef("sim/aircraft/latitude_deg");
  gLongitude = VYRAFindDataRef("sim/aircraft/longitude_deg");
  gHeading = VYRAFindDataRef("sim/aircraft/heading_deg");
  VYRARegisterDataAccessor(
      "map/navaids_shown", VYRA_TYPE_INT, 0, [](void*) { return gShown; }, nullptr, nullptr, nullptr, nullptr,
      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  VYRARegisterCommandHandler(VYRACreateCommand("map/plan_home", "Plan a flight to the nearest airport"),
                             OnPlanHome, 1, nullptr);
  VYRAWindowCreateParams params{};
  params.structSize = sizeof(params);
  params.left = kRight - kSize;
  params.top = kTop;
  params.right = kRight;
  params.bottom = kTop - kSize;
  params.visible = 1;
  params.draw = Draw;
  params.handleMouseClick = Click;
  params.handleMouseWheel = Wheel;
  VYRACreateWindowEx(&params);
  return 1;
}

int VyPluginEnable() {
  ReadNavAids();
  return 1;
}
