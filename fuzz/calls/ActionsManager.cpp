// Plugins and their states, messages, features, errors and paths; and the host's own calls from inside a
// plugin's code.
#include <algorithm>
#include <cstring>
#include <string>

#include "Actions.h"
#include "Host.h"
#include "Input.h"

namespace calls {

namespace {

VYRAPluginID AnyID() {
  return gInput.OneIn(4) ? gInput.Int() : gInput.Below(std::max(2, VYRACountPlugins() + 1));
}

void EnablePlugin(Plugin&) {
  const VYRAPluginID id = AnyID();
  const int result = Do("VYRAEnablePlugin", [&] { return VYRAEnablePlugin(id); });
  Require(result == 0 || VYRAIsPluginEnabled(id) != 0, "a plugin counts as enabled that is not");
}

void DisablePlugin(Plugin&) {
  Do("VYRADisablePlugin", [] { VYRADisablePlugin(AnyID()); });
}

void SendMessage(Plugin&) {
  Call call("VYRASendMessageToPlugin");
  const VYRAPluginID to = gInput.OneIn(3) ? VYRA_NO_PLUGIN : AnyID();
  for (const Plugin& plugin : gBook.plugins) {
    const bool isHost = &plugin == &gBook.Host();
    if (to == VYRA_NO_PLUGIN && (!isHost || VYRACountPlugins() > 0)) call.Expect(plugin);
  }
  VYRASendMessageToPlugin(to, gInput.Int(), nullptr);
  call.Returned();
}

void AskPlugins(Plugin&) {
  char texts[4][VYRA_PLUGIN_INFO_SIZE];
  VYRAGetPluginInfo(AnyID(), texts[0], texts[1], texts[2], texts[3]);
  VYRAFindPluginByPath(gInput.Text());
  VYRAFindPluginBySignature(gInput.Text());
  VYRAIsPluginEnabled(gInput.Int());
  Require(VYRADebugGetCurrentPluginName() != nullptr, "a plugin has no name");
  Do("VYRADebugString", [] { VYRADebugString(gInput.Text()); });
}

void UseFeatures(Plugin& self) {
  const int value = gInput.Below(3);
  Do("VYRAEnableFeature", [&] { VYRAEnableFeature(VYRA_FEATURE_WANTS_REFLECTIONS, value); });
  if (self.module != nullptr && self.IsSettled()) self.wantsReflections = value != 0;
  Do("VYRAIsFeatureEnabled", [] { VYRAIsFeatureEnabled(gInput.Text()); });
}

void ListFeatures(Plugin& self) {
  Registration& r = gBook.Register(Family::enumeration, self);
  Do("VYRAEnumerateFeatures", [&] { VYRAEnumerateFeatures(self.callbacks.found, &r); });
}

void SetErrorCallback(Plugin& self) {
  if (self.module == nullptr) return;
  self.hasErrorCallback = !gInput.OneIn(4);
  VYRASetErrorCallback(self.hasErrorCallback ? self.module->error : nullptr);
}

void ListFolder(Plugin&) {
  char names[64];
  char* indices[4];
  const int size = std::min(gInput.Int(), static_cast<int>(sizeof(names)));
  const int count = std::min(gInput.Int(), 4);
  VYRAGetDirectoryContents(gInput.OneIn(4) ? gInput.Text() : "/", gInput.Int(), names, size, indices, count,
                           nullptr, nullptr);
}

void AskPaths(Plugin&) {
  char path[VYRA_PATH_SIZE];
  Do("VYRAGetSystemPath", [&] { VYRAGetSystemPath(gInput.OneIn(8) ? nullptr : path); });
  const char* const text = gInput.Text();
  std::string copy = text != nullptr ? text : "";
  VYRAExtractFileAndPath(copy.data());
  Do("VYRALoadDataFile", [&] { VYRALoadDataFile(gInput.Int(), text); });
  Do("VYRASaveDataFile", [&] { VYRASaveDataFile(gInput.Int(), text); });
}

void UseButtons(Plugin&) {
  const int button = gInput.Int();
  if (!gInput.OneIn(3)) {
    gBook.buttons.push_back(button);
    Do("VYRACommandButtonPress", [&] { VYRACommandButtonPress(button); });
  } else {
    Do("VYRACommandButtonRelease", [&] { VYRACommandButtonRelease(button); });
  }
}

void AskHost(Plugin&) {
  int version = 0;
  Do("VYRAGetVersions", [&] { VYRAGetVersions(nullptr, &version, nullptr); });
  Do("VYRAFindSymbol", [] { VYRAFindSymbol(gInput.Text()); });
  Require(VYRAGetVirtualKeyDescription(static_cast<char>(gInput.Byte())) != nullptr, "a key has no name");
}

void HostEvent(Plugin&) { gHost.Event(); }

const Action kActions[] = {EnablePlugin,     EnablePlugin, EnablePlugin, DisablePlugin, DisablePlugin,
                           SendMessage,      SendMessage,  AskPlugins,   UseFeatures,   ListFeatures,
                           SetErrorCallback, ListFolder,   AskPaths,     UseButtons,    AskHost,
                           HostEvent,        HostEvent,    HostEvent,    HostEvent};

}  // namespace

const ActionList kManagerActions = {kActions, std::size(kActions)};

}  // namespace calls
