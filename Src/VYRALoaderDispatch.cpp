#include "VYRALoaderDispatch.h"

#include "VYRALoaderIdentities.h"

VYRAPluginID gDispatchedPlugin = VYRA_HOST_PLUGIN;
std::atomic<int> gDispatchDepth = 0;
std::atomic<VYRACallWord> gRunningCalls[VYRA_MOST_RUNNING_CALLS];
std::atomic<const char*> gRunningModules[VYRA_MOST_RUNNING_CALLS];

VYRAPluginID VYRASetDispatchedPlugin(VYRAPluginID plugin) {
  gDispatchedPlugin = plugin;
  return plugin;
}

VYRAPluginID VYRAGetDispatchedPlugin() { return gDispatchedPlugin; }

StModuleCall::StModuleCall(VYRAPluginID plugin, int kind, const char* path)
    : savedDepth(gDispatchDepth.load(std::memory_order_relaxed)),
      word(VYRACallWordOf(plugin, savedDepth + 1, kind)),
      modulePath(VYRAIdentityKeepText(path)) {
  VYRARunningModuleAt(savedDepth + 1).store(modulePath);
  VYRARunningCallAt(savedDepth + 1).store(word);
  gDispatchDepth.store(savedDepth + 1);
  told = gWatch != 0 ? VYRAWatchTellBegin(word) : 0;
}

StModuleCall::~StModuleCall() {
  if (told != 0) {
    // Whatever ran inside may have used this place of the table, should it have gone deep enough.
    VYRARunningModuleAt(savedDepth + 1).store(modulePath);
    VYRAWatchTellEnd(word, told);
  }
  gDispatchDepth.store(savedDepth);
}
