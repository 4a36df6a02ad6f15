// Who runs now, and the watcher that is told of every call into a plugin.
#include "VYRAWatch.h"

#include <algorithm>
#include <iterator>

#include "VYRALoaderIdentities.h"
#include "VYRALoaderRegistry.h"
#include "VYRAWatchInternal.h"

unsigned gWatch = 0;

namespace {

constexpr const char* kKindNames[] = {
    "",           "opening",       "start",        "enable",        "disable",     "stop",
    "closing",    "message",       "flight loop",  "draw callback", "window draw", "window mouse",
    "window key", "window cursor", "window wheel", "key sniffer",   "hot key",     "camera",
    "menu",       "command",       "planes",       "object",        "shared data", "dataref",
    "enumerator", "error",
};
static_assert(std::size(kKindNames) == VYRA_CALL_ERROR + 1);

VYRAWatcher gWatcher = {};
unsigned gWatchSettings = 0;  // so far; each is known by its number

bool IsOfModule(int kind) { return kind == VYRA_CALL_OPENING || kind == VYRA_CALL_CLOSING; }

// A noted call as the interface shows it. That of a module itself stands beside the calls.
VYRARunningCall Describe(VYRACallWord call) {
  const int kind = VYRACallKind(call);
  const VYRARunningModule& module = gRunningModules[VYRAPlaceOfCall(VYRACallDepth(call))];
  const VYRAPluginID plugin = IsOfModule(kind) ? module.plugin.load() : VYRACallPlugin(call);
  VYRAIdentity identity = kind != VYRA_CALL_OPENING ? VYRAIdentityOf(plugin) : VYRAIdentity();
  if (IsOfModule(kind)) identity.path = module.path.load();
  return {plugin, kind, identity.name, identity.signature, identity.path};
}

// A noted call as the watcher is shown it. Mostly the plugin is the one of the call before.
const VYRARunningCall& DescribeToWatcher(VYRACallWord call) {
  static VYRARunningCall described = {VYRA_NO_PLUGIN, 0, "", "", ""};
  static unsigned changes = 0;
  const int kind = VYRACallKind(call);
  const bool isKnown = described.plugin == VYRACallPlugin(call) && changes == gIdentityChanges &&
                       !IsOfModule(kind) && !IsOfModule(described.kind);
  if (!isKnown) [[unlikely]] {
    described = Describe(call);
    changes = gIdentityChanges;
  }
  described.kind = kind;
  return described;
}

}  // namespace

int VYRAGetRunningCalls(VYRARunningCall* outCalls, int capacity) {
  if (outCalls == nullptr) return 0;
  int count = 0;
  const VYRACallWord running = VYRALoadRunningCall();
  const int innermost = VYRACallDepth(running);
  const int outermost = std::max(innermost - VYRA_MOST_RUNNING_CALLS, 0) + 1;
  for (int depth = innermost; depth >= outermost && count < capacity; --depth) {
    const VYRACallWord call = depth == innermost ? running : gOuterCalls[VYRAPlaceOfCall(depth)].load();
    // A place whose call is not of this depth was used by a deeper one.
    if (VYRACallDepth(call) == depth && VYRACallKind(call) != VYRA_CALL_NONE) {
      outCalls[count++] = Describe(call);
    }
  }
  return count;
}

const char* VYRAGetCallKindName(int kind) {
  const bool isKind = kind > 0 && kind < static_cast<int>(std::size(kKindNames));
  return isKind ? kKindNames[kind] : "";
}

int VYRASetWatcher(const VYRAWatcher* watcher) {
  if (watcher != nullptr && (watcher->structSize != static_cast<int>(sizeof(*watcher)) ||
                             watcher->begin == nullptr || watcher->end == nullptr)) {
    return 0;
  }
  gWatcher = watcher != nullptr ? *watcher : VYRAWatcher();
  if (watcher != nullptr && ++gWatchSettings == 0) ++gWatchSettings;
  gWatch = watcher != nullptr ? gWatchSettings : 0;
  VYRARegistryWatch(gWatch != 0, gWatcher.wantsAccessors != 0);
  return 1;
}

unsigned VYRAWatchTellBegin(VYRACallWord call) {
  if (VYRACallPlugin(call) == VYRA_HOST_PLUGIN && !IsOfModule(VYRACallKind(call))) return 0;
  const unsigned told = gWatch;
  gWatcher.begin(&DescribeToWatcher(call), gWatcher.refcon);
  return told;
}

void VYRAWatchTellEnd(VYRACallWord call, unsigned told) {
  if (told != gWatch) return;
  gWatcher.end(&DescribeToWatcher(call), gWatcher.refcon);
}
