#include "host/CallWatchers.h"

#include <algorithm>
#include <vector>

namespace sim {
namespace {

std::vector<VYRAWatcher> gWatchers;

bool IsWanted(const VYRAWatcher& watcher, const VYRARunningCall& call) {
  return watcher.wantsAccessors != 0 || call.kind != VYRA_CALL_DATAREF;
}

void TellBegin(const VYRARunningCall* call, void* /*refcon*/) {
  for (const VYRAWatcher& watcher : gWatchers)
    if (IsWanted(watcher, *call)) watcher.begin(call, watcher.refcon);
}

// The last one's time lies inside the first one's at both ends.
void TellEnd(const VYRARunningCall* call, void* /*refcon*/) {
  for (auto watcher = gWatchers.rbegin(); watcher != gWatchers.rend(); ++watcher)
    if (IsWanted(*watcher, *call)) watcher->end(call, watcher->refcon);
}

// Sets the library's watcher only when that changes something: the library forgets the calls on its stack
// then.
void SetLibraryWatcher() {
  static bool isSet = false;
  static bool wantedAccessors = false;
  const bool wantsAccessors =
      std::ranges::any_of(gWatchers, [](const VYRAWatcher& watcher) { return watcher.wantsAccessors != 0; });
  if (isSet == !gWatchers.empty() && wantsAccessors == wantedAccessors) return;
  isSet = !gWatchers.empty();
  wantedAccessors = wantsAccessors;
  const VYRAWatcher all{.structSize = sizeof(VYRAWatcher),
                        .wantsAccessors = wantsAccessors ? 1 : 0,
                        .begin = TellBegin,
                        .end = TellEnd,
                        .refcon = nullptr};
  VYRASetWatcher(isSet ? &all : nullptr);
}

}  // namespace

void AddCallWatcher(const VYRAWatcher& watcher) {
  gWatchers.push_back(watcher);
  SetLibraryWatcher();
}

void RemoveCallWatcher(const void* refcon) {
  std::erase_if(gWatchers, [refcon](const VYRAWatcher& watcher) { return watcher.refcon == refcon; });
  SetLibraryWatcher();
}

}  // namespace sim
