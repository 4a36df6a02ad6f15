// Asks the simulator for what a command of a test names, and tells in the log what came of it.
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAGraphics.h"
#include "VYRAMenus.h"
#include "VYRANavigation.h"
#include "VYRAPlanes.h"
#include "VYRAPlugin.h"
#include "VYRAScenery.h"
#include "VYRAUtilities.h"

namespace {

VYRAObjectRef gObject;

__attribute__((format(printf, 1, 2))) void Tell(const char* format, ...) {
  char text[512];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof(text), format, arguments);
  va_end(arguments);
  VYRADebugString((std::string("explorer: ") + text + "\n").c_str());
}

double Value(const char* name) { return VYRAGetDatad(VYRAFindDataRef(name)); }

void Probe(const char* what, double latitude, double longitude) {
  static VYRAProbeRef probe = VYRACreateProbe(VYRA_PROBE_VERTICAL);
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  VYRAWorldToLocal(latitude, longitude, 500.0, &x, &y, &z);
  VYRAProbeInfo info{};
  info.size = sizeof(info);
  const int result =
      VYRAProbeTerrainXYZ(probe, static_cast<float>(x), static_cast<float>(y), static_cast<float>(z), &info);
  const double speed =
      std::hypot(static_cast<double>(info.velocity[0]), static_cast<double>(info.velocity[2]));
  const double normal = std::hypot(static_cast<double>(info.normal[0]), static_cast<double>(info.normal[1]),
                                   static_cast<double>(info.normal[2]));
  Tell("%s: result %d, wet %d, normal %.5f, speed %.1f", what, result, info.isWet, normal, speed);
}

void ExploreTerrain() {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  const auto height = static_cast<double>(VYRAGetDataf(VYRAFindDataRef("sim/aircraft/altitude_m")));
  VYRAWorldToLocal(Value("sim/aircraft/latitude_deg"), Value("sim/aircraft/longitude_deg"), height, &x, &y,
                   &z);
  Tell("at the published place: %d", std::hypot(x - Value("sim/aircraft/x_m"), y - Value("sim/aircraft/y_m"),
                                                z - Value("sim/aircraft/z_m")) < 1e-3);
  double latitude = 0.0;
  double longitude = 0.0;
  double altitude = 0.0;
  VYRALocalToWorld(0.0, 0.0, 0.0, &latitude, &longitude, &altitude);
  Tell("origin at %.6f, %.6f, %.6f", latitude, longitude, altitude);
  Probe("home", 54.3, 10.1);
  Probe("ship", Value("sim/ship/latitude_deg"), Value("sim/ship/longitude_deg"));
  Probe("sea", 54.34, 10.31);
  Probe("nowhere", 50.0, 10.1);
}

void TellNavAid(const char* what, int navAid) {
  int type = 0;
  float latitude = 0.0F;
  float longitude = 0.0F;
  float elevation = 0.0F;
  int frequency = 0;
  float heading = 0.0F;
  char ident[8] = "";
  char name[64] = "";
  char inRegion = 0;
  VYRAGetNavAidInfo(navAid, &type, &latitude, &longitude, &elevation, &frequency, &heading, ident, name,
                    &inRegion);
  VYRAGetNavAidInfo(navAid, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  Tell("%s: type %d %s (%s) at %.1f m, %d kHz, %.0f degrees, in region %d", what, type, ident, name,
       static_cast<double>(elevation), frequency, static_cast<double>(heading), inRegion);
}

void ExploreNavigation() {
  TellNavAid("first", VYRAGetFirstNavAid());
  int count = 0;
  for (int navAid = VYRAGetFirstNavAid(); navAid != -1; navAid = VYRAGetNextNavAid(navAid)) ++count;
  Tell("counted as published: %d", count == VYRAGetDatai(VYRAFindDataRef("sim/navigation/navaid_count")));
  Tell("types in order: %d", VYRAFindFirstNavAidOfType(1) < VYRAFindLastNavAidOfType(1));
  float latitude = 54.31F;
  float longitude = 10.12F;
  TellNavAid("nearest airport", VYRAFindNavAid(nullptr, nullptr, &latitude, &longitude, nullptr, 1));
  TellNavAid("by name", VYRAFindNavAid("home field", nullptr, nullptr, nullptr, nullptr, 8));
  int frequency = 128'025;
  TellNavAid("by frequency", VYRAFindNavAid(nullptr, nullptr, nullptr, nullptr, &frequency, -1));
  TellNavAid("none", VYRAFindNavAid(nullptr, "NOSUCH", nullptr, nullptr, nullptr, -1));
}

void TellEntry(int index) {
  int type = -1;
  char ident[8] = "";
  int navAid = 0;
  int altitude = 0;
  float latitude = 0.0F;
  float longitude = 0.0F;
  VYRAGetFMSEntryInfo(index, &type, ident, &navAid, &altitude, &latitude, &longitude);
  Tell("entry %d: type %d '%s' navaid %d at %d m, %.2f, %.2f", index, type, ident, navAid, altitude,
       static_cast<double>(latitude), static_cast<double>(longitude));
}

void MakePlan() {
  VYRASetFMSEntryInfo(0, VYRAGetFirstNavAid(), 500);
  VYRASetFMSEntryLatLon(2, 54.5F, 10.25F, 900);
  VYRASetFMSEntryLatLon(100, 54.5F, 10.25F, 900);
  VYRASetFMSEntryLatLon(3, 200.0F, 10.25F, 900);
  VYRASetDisplayedFMSEntry(2);
  VYRASetDestinationFMSEntry(0);
  Tell("plan: %d entries, %d shown, %d flown to, GPS %d of type %d", VYRACountFMSEntries(),
       VYRAGetDisplayedFMSEntry(), VYRAGetDestinationFMSEntry(), VYRAGetGPSDestination(),
       VYRAGetGPSDestinationType());
}

void TellPlan() {
  for (int index = 0; index < 3; ++index) TellEntry(index);
  VYRAClearFMSEntry(2);
  Tell("plan: %d entries once the last is empty", VYRACountFMSEntries());
}

void ExploreFiles() {
  Tell("saved plan %d, situation %d", VYRASaveDataFile(1, "plan.json"),
       VYRASaveDataFile(2, "situation.json"));
  Tell("saved nowhere %d", VYRASaveDataFile(1, "none/plan.json"));
  VYRAClearFMSEntry(0);
  VYRAClearFMSEntry(2);
  Tell("loaded damaged %d and %d, without a path %d", VYRALoadDataFile(1, "damaged-plan.json"),
       VYRALoadDataFile(2, "damaged-situation.json"), VYRALoadDataFile(1, nullptr));
  Tell("entries before loading %d", VYRACountFMSEntries());
  Tell("loaded plan %d", VYRALoadDataFile(1, "plan.json"));
}

void LoadSituation() { Tell("loaded situation %d", VYRALoadDataFile(2, "situation.json")); }

void TellFound(const char* path, void* /*refcon*/) {
  Tell("found %s", path);
  if (gObject == nullptr) gObject = VYRALoadObject(path);
}

void OnDamaged(VYRAObjectRef object, void* /*refcon*/) {
  Tell("damaged object: %s", object != nullptr ? "loaded" : "none");
}

void ExploreScenery() {
  Tell("looked up %d here", VYRALookupObjects("towers/light.obj", 54.5F, 10.0F, TellFound, nullptr));
  Tell("looked up %d elsewhere", VYRALookupObjects("towers/light.obj", 10.0F, 10.0F, TellFound, nullptr));
  Tell("damaged at once: %s", VYRALoadObject("damaged.obj") != nullptr ? "loaded" : "none");
  VYRALoadObjectAsync("damaged.obj", OnDamaged, nullptr);
  VYRAReloadScenery();
}

int DrawObjects(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
  VYRADrawInfo places[2] = {};
  for (VYRADrawInfo& place : places) place.size = sizeof(place);
  places[1].x = 100.0F;
  if (gObject != nullptr) VYRADrawObjects(gObject, 2, places, 0, 1);
  VYRADrawAircraft(1, 10.0F, 20.0F, 30.0F, 1.0F, 2.0F, 3.0F, 1, nullptr);
  return 1;
}

void TakePlanes() { Tell("planes taken: %d", VYRAAcquirePlanes(nullptr, nullptr, nullptr)); }

void FlyPlane() {
  VYRADisableAIForPlane(1);
  VYRASetDatad(VYRAFindDataRef("sim/planes/plane1_latitude_deg"), 54.75);
}

void SetUsersAircraft() {
  char path[600];
  VYRAGetSystemPath(path);
  VYRASetUsersAircraft((std::string(path) + "Aircraft/Damaged/Damaged.acf").c_str());
  VYRASetUsersAircraft((std::string(path) + "Aircraft/Kite/Kite.acf").c_str());
}

void Place() {
  VYRAPlaceUserAtAirport("NONE");
  VYRAPlaceUserAtAirport("HOME");
}

void PlaceAgain() { VYRAReinitUsersPlane(); }

void ExploreGraphics() {
  int textures[2] = {};
  VYRAGenerateTextureNumbers(textures, 2);
  VYRABindTexture2d(textures[1], 1);
  VYRABindTexture2d(textures[1], 1'000);
  VYRASetGraphicsState(1, 2, 3, 4, 5, 6, 7);
  Tell("textures differ %d, panel %d, none %d", textures[0] != textures[1], VYRAGetTexture(0),
       VYRAGetTexture(77));
}

void ExploreInput() {
  VYRASpeakString("good evening");
  VYRASimulateKeyPress(1, 0x74);  // hold as it is
  VYRASimulateKeyPress(0, 'q');
  VYRACommandKeyStroke(0x2D);  // throttle full
  VYRACommandButtonPress(1);   // brake
  auto* const elapsed = reinterpret_cast<double (*)()>(VYRAFindSymbol("skyvora_elapsed_seconds"));
  auto* const ground =
      reinterpret_cast<double (*)(double, double)>(VYRAFindSymbol("skyvora_ground_altitude_m"));
  auto* const log = reinterpret_cast<void (*)(const char*)>(VYRAFindSymbol("skyvora_write_log"));
  Tell("symbols: %.3f s, %.1f m, beyond %d, none %d", elapsed(), ground(54.3, 10.1),
       std::isnan(ground(0.0, 0.0)), VYRAFindSymbol("no_such_function") == nullptr);
  log("explorer: by symbol\n");
}

void ExploreSystem() {
  char path[600];
  VYRAGetPrefsPath(path);
  int host = 0;
  int hostId = 0;
  VYRAGetVersions(&host, nullptr, &hostId);
  const bool isInPlace = std::strlen(path) > 15 && std::strstr(path, "/vyra-sim.prefs") != nullptr;
  Tell("system: prefs in place %d, version %d, host %d, language %d", isInPlace, host, hostId,
       VYRAGetLanguage());
}

VYRAMenuID gMenu;

void MakeMenu() {
  gMenu = VYRACreateMenu("Explore", nullptr, 0, nullptr, nullptr);
  VYRAAppendMenuItem(gMenu, "first", nullptr, 0);
  VYRAAppendMenuItem(gMenu, "second", nullptr, 0);
}

void ChangeMenu() {
  VYRASetMenuItemName(gMenu, 1, "renamed", 0);
  VYRARemoveMenuItem(gMenu, 0);
}

void DestroyMenu() { VYRADestroyMenu(gMenu); }

void ReleaseButton() { VYRACommandButtonRelease(1); }

int OnKey(char key, int /*flags*/, char virtualKey, void* /*refcon*/) {
  Tell("key %d, virtual %d", key, virtualKey);
  return 1;
}

struct Action {
  const char* command;
  void (*act)();
};

constexpr Action kActions[] = {{"explore/terrain", ExploreTerrain},
                               {"explore/navigation", ExploreNavigation},
                               {"explore/make_plan", MakePlan},
                               {"explore/tell_plan", TellPlan},
                               {"explore/files", ExploreFiles},
                               {"explore/load_situation", LoadSituation},
                               {"explore/scenery", ExploreScenery},
                               {"explore/take_planes", TakePlanes},
                               {"explore/fly_plane", FlyPlane},
                               {"explore/give_planes_back", VYRAReleasePlanes},
                               {"explore/set_users_aircraft", SetUsersAircraft},
                               {"explore/place", Place},
                               {"explore/place_again", PlaceAgain},
                               {"explore/graphics", ExploreGraphics},
                               {"explore/input", ExploreInput},
                               {"explore/system", ExploreSystem},
                               {"explore/make_menu", MakeMenu},
                               {"explore/change_menu", ChangeMenu},
                               {"explore/destroy_menu", DestroyMenu},
                               {"explore/release_button", ReleaseButton}};

int OnCommand(VYRACommandRef /*command*/, int phase, void* refcon) {
  if (phase == VYRA_COMMAND_PHASE_BEGIN) static_cast<const Action*>(refcon)->act();
  return 1;
}

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Explorer");
  std::strcpy(outSignature, "org.skyvora.test.explorer");
  std::strcpy(outDescription, "Asks the simulator for everything.");
  for (const Action& action : kActions)
    VYRARegisterCommandHandler(VYRACreateCommand(action.command, ""), OnCommand, 1,
                               const_cast<Action*>(&action));
  VYRARegisterDrawCallback(DrawObjects, 25, 0, nullptr);
  VYRARegisterKeySniffer(OnKey, 0, nullptr);
  return 1;
}

VYRA_PLUGIN_EXPORT void VyPluginReceiveMessage(VYRAPluginID from, int message, void* /*param*/) {
  if (from == VYRA_HOST_PLUGIN) Tell("message %d", message);
}
