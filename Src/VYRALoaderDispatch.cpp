#include "VYRALoaderDispatch.h"

#include "VYRALoaderIdentities.h"

VYRAPluginID VYRASetDispatchedPlugin(VYRAPluginID plugin) {
  gDispatchedPlugin = plugin;
  return plugin;
}

VYRAPluginID VYRAGetDispatchedPlugin() { return gDispatchedPlugin; }

StModuleCall::StModuleCall(VYRAPluginID modulePlugin, int kind, const char* path)
    : modulePath(VYRAIdentityKeepText(path)),
      plugin(modulePlugin),
      call(gDispatchedPlugin, kind),
      word(VYRALoadRunningCall()) {
  NoteModule();
  if (gWatch != 0) told = VYRAWatchTellBegin(word);
}

StModuleCall::~StModuleCall() {
  if (told == 0) return;
  NoteModule();  // again: calls inside that went deep enough have used the same place
  VYRAWatchTellEnd(word, told);
}

void StModuleCall::NoteModule() const {
  VYRARunningModule& module = gRunningModules[VYRAPlaceOfCall(VYRACallDepth(word))];
  module.path.store(modulePath);
  module.plugin.store(plugin);
}
