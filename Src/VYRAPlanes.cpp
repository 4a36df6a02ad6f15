#include "VYRAPlanes.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "VYRADataAccess.h"
#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderPaths.h"
#include "VYRAPlanesInternal.h"
#include "VYRAUtilities.h"

namespace {

constexpr int kUsersPlane = 0;
constexpr int kNoLimit = -1;
constexpr int kFirstVersionThatReinits = 568;

struct WaitingRequest {
  VYRAPlanesReturned_f callback;
  void* refcon;
  VYRAPluginID owner;
};

using WaitingRequests = std::deque<WaitingRequest>;

VYRAPluginID gOwner = VYRA_NO_PLUGIN;
int gPlaneLimit = kNoLimit;
int gMaxPlanes = -1;  // until the host has said
bool gIsSelfLoading = false;
std::map<int, std::string> gRequestedPlanes;  // the wishes alone, by plane
WaitingRequests gQueue;

// A release that tells those who waited when it began. It takes them off the queue, so that they can wait
// again for the next release, and keeps them within reach of a cleanup: a plugin may be unloaded, and its ID
// given out again, before its turn comes.
class StTelling {
 public:
  StTelling() : requests(std::exchange(gQueue, {})), outer(innermost) { innermost = this; }
  // Whoever was not told, because a callback threw, waits on.
  ~StTelling() {
    innermost = outer;
    gQueue.insert(gQueue.begin(), requests.begin(), requests.end());
  }
  StTelling(const StTelling&) = delete;
  StTelling& operator=(const StTelling&) = delete;

  void TellAll() {
    while (!requests.empty()) {
      const WaitingRequest request = requests.front();
      requests.pop_front();
      const StDispatchCallback dispatch(request.owner, VYRA_CALL_PLANES);
      if (dispatch()) request.callback(request.refcon);
    }
  }

  // Those of every release on its way, and of the queue.
  static void ForgetRequestsOf(VYRAPluginID plugin) {
    const auto isOfPlugin = [&](const WaitingRequest& request) { return request.owner == plugin; };
    for (StTelling* telling = innermost; telling != nullptr; telling = telling->outer) {
      std::erase_if(telling->requests, isOfPlugin);
    }
    std::erase_if(gQueue, isOfPlugin);
  }

 private:
  WaitingRequests requests;
  StTelling* outer;
  static inline StTelling* innermost = nullptr;
};

// While the library has the host load a model, the host's questions are not answered from the wishes.
class StSelfLoading {
 public:
  StSelfLoading() : saved(std::exchange(gIsSelfLoading, true)) {}
  ~StSelfLoading() { gIsSelfLoading = saved; }
  StSelfLoading(const StSelfLoading&) = delete;
  StSelfLoading& operator=(const StSelfLoading&) = delete;

 private:
  bool saved;
};

bool CallerHoldsPlanes() { return gOwner != VYRA_NO_PLUGIN && VYRAGetDispatchedPlugin() == gOwner; }

void SwitchAIOff(int planeIndex, int off) {
  char name[64];
  std::snprintf(name, sizeof(name), "sim/private/net_disables/ai_loc[%d]", planeIndex);
  VYRASetDatai(VYRAFindDataRef(name), off);
}

// Longer paths name no file; a host's buffer has no room for them.
bool CanNameAFile(std::string_view path) { return path.size() < VYRA_PLANE_PATH_SIZE; }

void Wish(int planeIndex, const std::string& path) {
  if (path.empty()) {
    gRequestedPlanes.erase(planeIndex);
  } else {
    gRequestedPlanes[planeIndex] = path;
  }
}

void LoadModel(int planeIndex, const std::string& path, const char* fileName) {
  const StSelfLoading loading;
  gHooks->SetAircraftModel(planeIndex, path.c_str(), fileName);
}

// Kept: without a separator, the first character counts as one. Hosts look their models up by the name that
// they have always been given.
const char* FileNameOf(const char* path) {
  const char separator = *VYRAGetDirectorySeparator();
  if (*path == '\0') return path;
  const char* last = path + std::strlen(path);
  while (last > path && *last != separator) --last;
  return last + 1;
}

int Limited(int total) { return gPlaneLimit != kNoLimit ? VYRA_TMIN(gPlaneLimit, total) : total; }

void ReleaseAs(VYRAPluginID plugin) {
  const StActAs owner(plugin);
  VYRAReleasePlanes();
}

}  // namespace

int VYRAAcquirePlanes(char** aircraft, VYRAPlanesReturned_f callback, void* refcon) {
  if (CallerHoldsPlanes()) return 1;
  if (gOwner != VYRA_NO_PLUGIN) {
    if (callback != nullptr) gQueue.push_back({callback, refcon, VYRAGetDispatchedPlugin()});
    return 0;
  }
  gRequestedPlanes.clear();
  gPlaneLimit = kNoLimit;
  gOwner = VYRAGetDispatchedPlugin();
  if (aircraft == nullptr) return 1;
  for (int plane = 0; plane < INT_MAX && aircraft[plane] != nullptr; ++plane) {
    const std::string model = VYRAPathFromPlugin(aircraft[plane]);
    if (CanNameAFile(model)) Wish(plane, model);
  }
  return 1;
}

void VYRAReleasePlanes(void) {
  if (!CallerHoldsPlanes()) return;
  gPlaneLimit = kNoLimit;
  gOwner = VYRA_NO_PLUGIN;
  gRequestedPlanes.clear();
  StTelling telling;
  // As many as there are now: the accessors that are called may tell of another number.
  for (int plane = 1, planes = gMaxPlanes; plane < planes; ++plane) SwitchAIOff(plane, 0);
  telling.TellAll();
}

void VYRASetActiveAircraftCount(int count) {
  if (CallerHoldsPlanes()) gPlaneLimit = count;
}

void VYRASetAircraftModel(int planeIndex, const char* path) {
  if (!CallerHoldsPlanes() || path == nullptr || planeIndex < 0) return;
  const std::string model = VYRAPathFromPlugin(path);
  if (!CanNameAFile(model)) return;
  Wish(planeIndex, model);
  // Kept: the full path stands for the file name too. Hosts tell an AI plane's model from the user's by it.
  if (planeIndex < gMaxPlanes) LoadModel(planeIndex, model, model.c_str());
}

void VYRADisableAIForPlane(int planeIndex) { SwitchAIOff(planeIndex, 1); }

void VYRACountAircraft(int* outTotal, int* outActive, VYRAPluginID* outController) {
  // The host may write through what the plugin gave, and gets a place of the library's own where that is
  // null.
  int unwantedTotal = 0;
  int unwantedActive = 0;
  VYRAPluginID unwantedController = VYRA_NO_PLUGIN;
  if (outTotal == nullptr) outTotal = &unwantedTotal;
  if (outActive == nullptr) outActive = &unwantedActive;
  if (outController == nullptr) outController = &unwantedController;
  const int total = gHooks->CountAircraft(outTotal, outActive, outController);
  *outTotal = total;
  *outActive = Limited(total);
  *outController = gOwner;
}

void VYRAGetNthAircraftModel(int planeIndex, char* outFileName, char* outPath) {
  char unwantedFileName[kPathBufferSize];
  char unwantedPath[kPathBufferSize];
  if (outFileName == nullptr) outFileName = unwantedFileName;
  if (outPath == nullptr) outPath = unwantedPath;
  // Kept: plugins give the buffer for the file name first, the host takes the one for the path first.
  gHooks->GetNthAircraftModel(planeIndex, outPath, outFileName);
  if (outPath != unwantedPath) VYRAPathToPluginInPlace(outPath);
}

void VYRASetUsersAircraft(const char* path) {
  if (path != nullptr) LoadModel(kUsersPlane, VYRAPathFromPlugin(path), FileNameOf(path));
}

void VYRAPlaceUserAtAirport(const char* airportCode) { gHooks->PlaceUserAtAirport(airportCode); }

void VYRAReinitUsersPlane(void) {
  if (!CallerHoldsPlanes() || gHooks->hostVersion < kFirstVersionThatReinits) return;
  gHooks->ReinitUsersPlane(208, 201);
}

void VYRADrawAircraft(int planeIndex, float x, float y, float z, float pitch, float roll, float yaw, int full,
                      void* drawingState) {
  if (!CallerHoldsPlanes()) return;
  gHooks->DrawAircraft(planeIndex, x, y, z, pitch, roll, yaw, full, drawingState);
}

void VYRAHandleUpdatePlaneNameAndPath(int planeIndex, char* /*name*/, char* ioPath) {
  if (gOwner == VYRA_NO_PLUGIN || gIsSelfLoading || planeIndex == kUsersPlane || ioPath == nullptr) return;
  const auto wish = gRequestedPlanes.find(planeIndex);
  if (wish != gRequestedPlanes.end()) std::strcpy(ioPath, wish->second.c_str());
}

int VYRAHandleGetNumberPlanesToHandle(int total, int flag) {
  gMaxPlanes = total;
  if (flag != 0 || gIsSelfLoading || gOwner == VYRA_NO_PLUGIN) return total;
  return Limited(total);
}

void VYRAPlaneDisableHook(VYRAPluginID plugin) {
  if (plugin == gOwner) ReleaseAs(plugin);
}

void VYRAPlaneCleanupHook(VYRAPluginID plugin) {
  StTelling::ForgetRequestsOf(plugin);
  // As the plugin itself, whatever led to the unload: its ID may be given out again, and the next plugin of
  // that ID must not find itself holding the planes. The plugin is not enabled any more, so it is not called.
  if (plugin == gOwner) ReleaseAs(plugin);
}
