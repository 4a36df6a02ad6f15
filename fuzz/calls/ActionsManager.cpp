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
  const int result = Do<VYRAEnablePlugin>(id);
  Require(result == 0 || VYRAIsPluginEnabled(id) != 0, "a plugin counts as enabled that is not");
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
  Require(VYRADebugGetCurrentPluginName() != nullptr, "a plugin has no name");
  Require(VYRAGetVirtualKeyDescription(static_cast<char>(gInput.Byte())) != nullptr, "a key has no name");
}

void UseFeatures(Plugin& self) {
  const int value = gInput.Below(3);
  Do<VYRAEnableFeature>(VYRA_FEATURE_WANTS_REFLECTIONS, value);
  if (self.module != nullptr && self.IsSettled()) self.wantsReflections = value != 0;
}

void ListFeatures(Plugin& self) {
  Registration& r = gBook.Register(Family::enumeration, self);
  Do<VYRAEnumerateFeatures>(self.callbacks.found, &r);
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

void UseButtons(Plugin&) {
  const int button = gInput.Int();
  if (!gInput.OneIn(3)) {
    gBook.buttons.push_back(button);
    Do<VYRACommandButtonPress>(button);
  } else {
    Do<VYRACommandButtonRelease>(button);
  }
}

void HostEvent(Plugin&) { gHost.Event(); }

// A text of the plugin's own, which is cut in place.
void ExtractFile(Plugin&) {
  const char* const text = gInput.Text();
  std::string copy = text != nullptr ? text : "";
  VYRAExtractFileAndPath(copy.data());
}

// clang-format off
const Action kActions[] = {
    EnablePlugin, EnablePlugin, EnablePlugin, SendMessage, SendMessage, AskPlugins, UseFeatures, ListFeatures,
    [](Plugin&) { Do<VYRADisablePlugin>(AnyID()); }, [](Plugin&) { Do<VYRADisablePlugin>(AnyID()); },
    SetErrorCallback, ListFolder, ExtractFile, UseButtons, HostEvent, HostEvent, HostEvent, HostEvent,
    kAny<VYRAFindPluginByPath>, kAny<VYRAFindPluginBySignature>, kAny<VYRAIsPluginEnabled>,
    kAny<VYRADebugString>, kAny<VYRAIsFeatureEnabled>, kAny<VYRAGetSystemPath>, kAny<VYRAGetPrefsPath>,
    kAny<VYRALoadDataFile>, kAny<VYRASaveDataFile>, kAny<VYRAGetVersions>, kAny<VYRAFindSymbol>,
    kAny<VYRASpeakString>, kAny<VYRACommandKeyStroke>};
// clang-format on

}  // namespace

const ActionList kManagerActions = {kActions, std::size(kActions)};

}  // namespace calls
