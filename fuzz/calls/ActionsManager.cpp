// Plugins and their states, messages, features, errors and paths; and the host's own calls from inside a
// plugin's code.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

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
  const auto plugin = std::find_if(gBook.plugins.begin(), gBook.plugins.end(), [&](const Plugin& one) {
    return one.id == id && one.IsSettled() && one.loaded && !one.enabled && one.module != nullptr;
  });
  // Inside other calls, one that is disabled may be about to leave.
  const bool isAsked = gBook.depth == 0 && gBook.interrupted == 0 && plugin != gBook.plugins.end();
  const int epoch = isAsked ? plugin->epoch : 0;
  const int result = Do<VYRAEnablePlugin>(id);
  Require(!isAsked || plugin->epoch > epoch, "a plugin is not asked whether it can be enabled");
  Require(result == 0 || VYRAIsPluginEnabled(id) != 0, "a plugin counts as enabled that is not");
}

void SendMessage(Plugin& self) {
  Call call("VYRASendMessageToPlugin");
  const VYRAPluginID to = gInput.OneIn(3) ? VYRA_NO_PLUGIN : AnyID();
  for (const Plugin& plugin : gBook.plugins) {
    const bool isHost = &plugin == &gBook.Host();
    if (to == VYRA_NO_PLUGIN && (!isHost || VYRACountPlugins() > 0)) call.Expect(plugin);
  }
  std::vector<const void*> receivers = gBook.Receivers();
  std::erase_if(receivers, [&](const void* who) {
    return to != VYRA_NO_PLUGIN && static_cast<const Plugin*>(who)->id != to;
  });
  const int message = gInput.Int();
  void* const param = gInput.OneIn(2) ? &gBook : nullptr;
  call.told = {VYRAGetMyID(), message, 0};
  call.param = param;
  VYRASendMessageToPlugin(to, message, param);
  call.Returned();
  if (self.started || self.module == nullptr) call.RequireTurns(receivers);
}

void AskPlugins(Plugin&) {
  char texts[4][VYRA_PLUGIN_INFO_SIZE];
  VYRAGetPluginInfo(AnyID(), texts[0], texts[1], texts[2], texts[3]);
  Require(VYRADebugGetCurrentPluginName() != nullptr, "a plugin has no name");
  Require(VYRAGetVirtualKeyDescription(static_cast<char>(gInput.Byte())) != nullptr, "a key has no name");
}

constexpr const char* kFeatures[] = {VYRA_FEATURE_WANTS_REFLECTIONS, VYRA_FEATURE_NATIVE_PATHS, "none"};

void UseFeatures(Plugin& self) {
  if (self.module == nullptr) return;  // the host's are lost with every start and reload
  const int which = gInput.Below(5) % 3;
  const int value = gInput.Below(3);
  const char* const report = which == 2 ? "Illegal feature name passed to VYRAEnableFeature" : nullptr;
  Call call("VYRAEnableFeature");
  VYRAEnableFeature(kFeatures[which], value);
  call.RequireReport(self, report);
  if (self.out || which == 2) return;
  self.features[which] = value;
  self.wantsReflections = self.features[0] != 0;
}

void AskFeatures(Plugin& self) {
  const int which = gInput.Below(5) % 3;
  Require(VYRAHasFeature(kFeatures[which]) == (which < 2 ? 1 : 0), "there is another feature, or one less");
  Call call("VYRAIsFeatureEnabled");
  const int value = VYRAIsFeatureEnabled(kFeatures[which]);
  call.RequireReport(self, which == 2 ? "Illegal feature name passed to VYRAEnableFeature" : nullptr);
  if (!self.IsSettled()) return;
  Require(value == (which == 2 ? 0 : self.features[which]), "a feature has another value");
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
  const int button = gInput.OneIn(8) ? gInput.Int() : 1 + gInput.Below(4);
  const int up = gInput.OneIn(3) ? 1 : 0;
  const struct StReleased {
    int button;
    int up;
    ~StReleased() {
      auto& held = gBook.buttons;
      const auto first = std::find(held.begin(), held.end(), button);
      if (up != 0 && first != held.end()) held.erase(first);
    }
  } released{button, up};
  Call call("button");
  up != 0 ? VYRACommandButtonRelease(button) : VYRACommandButtonPress(button);
  if (up == 0 && button != 0) gBook.buttons.push_back(button);
  call.RequireServices({{kButton, button, up, 0}, {kButton, button, up, 1}});
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
    EnablePlugin, EnablePlugin, EnablePlugin, SendMessage, SendMessage, AskPlugins, UseFeatures, AskFeatures, ListFeatures,
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
