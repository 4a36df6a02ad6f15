#include "VYRALoaderModule.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderHostCalls.h"
#include "VYRALoaderIdentities.h"
#include "VYRALoaderLifecycle.h"
#include "VYRAModuleLoader.h"

namespace {

using Start_f = int (*)(char* outName, char* outSignature, char* outDescription);

// What a start callback writes. Zeroed, so that a text which the plugin did not write is empty, and read
// through Text, so that one which it did not terminate ends with its buffer.
struct Identity {
  char name[VYRA_PLUGIN_INFO_SIZE] = {};
  char signature[VYRA_PLUGIN_INFO_SIZE] = {};
  char description[VYRA_PLUGIN_INFO_SIZE] = {};

  static std::string Text(const char (&buffer)[VYRA_PLUGIN_INFO_SIZE]) {
    return {buffer, strnlen(buffer, sizeof(buffer))};
  }
};

template <class Function>
Function FindCallback(void* module, const char* name) {
  return reinterpret_cast<Function>(VYRAFindSymbol(module, name, 1));
}

// The path behind its last "plugins" and the separator after it: what a plugin is called until it has
// named itself.
std::string NameFromPath(const std::string& path) {
  constexpr std::string_view kFolder = "plugins";
  const std::size_t found = path.rfind(kFolder);
  if (found == std::string::npos) return path;
  return path.substr(std::min(path.size(), found + kFolder.size() + 1));
}

// A module's place in the registry while it starts. Unless it is kept, the place goes again, and with it
// all that the module registered: when it refuses, when it is rejected and when its start throws.
class StStartingPlugin {
 public:
  explicit StStartingPlugin(PluginRecord record) : plugin(VYRACountPlugins()), module(record.moduleHandle) {
    VYRASetDispatchedPlugin(plugin);
    VYRAIdentitySet(plugin, record.name, "", record.path);
    VYRARegistryAppend(std::move(record));
  }
  ~StStartingPlugin() {
    VYRASetDispatchedPlugin(VYRA_HOST_PLUGIN);
    if (!settled) Reject(false);
  }
  StStartingPlugin(const StStartingPlugin&) = delete;
  StStartingPlugin& operator=(const StStartingPlugin&) = delete;

  VYRAPluginID ID() const { return plugin; }
  // False when the start callback led to a shutdown.
  bool IsStillThere() const {
    return VYRARegistryIsLoaded(plugin) && VYRARegistryRecord(plugin).moduleHandle == module;
  }
  void Keep() { settled = true; }
  void Reject(bool owesStop) {
    settled = true;
    if (!IsStillThere()) return;
    VYRALoaderCloseRejectedModule(VYRALoaderRemovePlugin(plugin, owesStop), plugin);
    VYRALoaderDropLastRecord(plugin);
  }

 private:
  VYRAPluginID plugin;
  void* module;
  bool settled = false;
};

void* OpenModule(const std::string& path) {
  const StModuleCall opening(VYRACountPlugins(), VYRA_CALL_OPENING, path.c_str());
  return VYRALoadDLL(path.c_str());
}

bool IsSignatureTaken(const std::string& signature) {
  // Kept: the search includes the host's record and the new one, whose signatures are empty, so a plugin
  // without a signature is never accepted.
  return VYRAFindPluginBySignature(signature.c_str()) != VYRA_NO_PLUGIN;
}

int CallStart(VYRAPluginID plugin, Start_f start, Identity& identity) {
  const StDispatchCallback dispatch(plugin, VYRA_CALL_START, StDispatchCallback::Ask::nothing);
  return start(identity.name, identity.signature, identity.description);
}

// Starts a module whose record is filled so far as it can be without asking it; its ID, or -1.
VYRAPluginID StartPlugin(PluginRecord unnamed, Start_f start) {
  const std::string path = unnamed.path;
  Identity identity;
  StStartingPlugin starting(std::move(unnamed));
  if (CallStart(starting.ID(), start, identity) == 0) {
    VYRALog("Failed: ", path, ". (The plugin refused to start by returning 0 from VyPluginStart.)\n\n");
    starting.Reject(false);
    return VYRA_NO_PLUGIN;
  }
  if (!starting.IsStillThere()) return VYRA_NO_PLUGIN;

  VYRASetDispatchedPlugin(VYRA_HOST_PLUGIN);
  const std::string signature = Identity::Text(identity.signature);
  VYRAIdentitySet(starting.ID(), Identity::Text(identity.name), signature, path);
  if (IsSignatureTaken(signature)) {
    VYRASetDispatchedPlugin(starting.ID());
    starting.Reject(true);
    VYRALog("Warning: ", path, " Signature: ", signature,
            ". (A version of this plugin is already loaded.)\n");
    return VYRA_NO_PLUGIN;
  }
  starting.Keep();
  PluginRecord& record = VYRARegistryRecord(starting.ID());
  record.name = Identity::Text(identity.name);
  record.signature = signature;
  record.description = Identity::Text(identity.description);
  VYRALog("Loaded: ", path, " (", signature, ").\n\n");
  return starting.ID();
}

}  // namespace

VYRAPluginID LoadOnePlugin(const std::string& path, int verbose) {
  void* module = OpenModule(path);
  if (module == nullptr) {
    if (verbose != 0) {
      VYRALog("Failed: ", path,
              ".  (This file is missing, not a DLL or could not be loaded due to another missing DLL.)\n\n");
    }
    return VYRA_NO_PLUGIN;
  }

  const auto start = FindCallback<Start_f>(module, "VyPluginStart");
  PluginRecord record;
  record.moduleHandle = module;
  record.stop = FindCallback<decltype(record.stop)>(module, "VyPluginStop");
  record.enable = FindCallback<decltype(record.enable)>(module, "VyPluginEnable");
  record.disable = FindCallback<decltype(record.disable)>(module, "VyPluginDisable");
  record.receiveMessage = FindCallback<decltype(record.receiveMessage)>(module, "VyPluginReceiveMessage");
  record.name = NameFromPath(path);
  record.path = path;
  record.description = path;
  if (start == nullptr) {
    VYRALog("Failed: ", path,
            ".  (This file is a loadable DLL but is missing the VyPluginStart callback.)\n\n");
    VYRALoaderCloseRejectedModule(module, VYRACountPlugins());
    return VYRA_NO_PLUGIN;
  }
  return StartPlugin(std::move(record), start);
}
