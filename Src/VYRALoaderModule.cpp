#include "VYRALoaderModule.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "VYRAHost.h"
#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderIdentities.h"
#include "VYRALoaderLifecycle.h"
#include "VYRALoaderLifecycleHooks.h"
#include "VYRALoaderState.h"
#include "VYRALoaderSteps.h"
#include "VYRAModuleLoader.h"
#include "VYRAModuleLoaderFile.h"

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

enum class Outcome {
  accepted,
  notOpened,
  metAgain,  // its file was opened before: the handle is that of a plugin that runs
  hasNoStart,
  refused,   // its start callback returned 0
  taken,     // another plugin has its signature
  thrown,    // its start callback or one of its constructors threw
  overtaken  // there was a shutdown meanwhile
};

// The path behind its last "plugins" and the separator after it: what a plugin is called until it has
// named itself.
std::string NameFromPath(const std::string& path) {
  constexpr std::string_view kFolder = "plugins";
  const std::size_t found = path.rfind(kFolder);
  if (found == std::string::npos) return path;
  return path.substr(std::min(path.size(), found + kFolder.size() + 1));
}

VYRAPluginID AppendRecord(const std::string& path) {
  PluginRecord record;
  record.stage = PluginStage::opening;
  record.name = NameFromPath(path);
  record.path = path;
  record.description = path;
  const VYRAPluginID plugin = VYRACountPlugins();
  VYRAIdentitySet(plugin, record.name, "", path);
  VYRARegistryAppend(std::move(record));
  return plugin;
}

template <class Function>
void FindCallback(void* module, const char* name, Function& callback) {
  callback = reinterpret_cast<Function>(VYRAFindSymbol(module, name, 1));
}

// The signature of the plugin whose module has this handle, be it on its way out; nothing when there is none.
std::optional<std::string> SignatureOfInstance(const void* handle) {
  const auto record = std::ranges::find(gAllPlugins, handle, &PluginRecord::moduleHandle);
  if (record != gAllPlugins.end()) return record->signature;
  const auto waiting = std::ranges::find(gWaitingModules, handle, &ClosingModule::handle);
  if (waiting != gWaitingModules.end()) return waiting->signature;
  return std::nullopt;
}

bool IsSignatureTaken(const std::string& signature) {
  // Kept: the search includes the host's record and the new one, whose signatures are empty, so a plugin
  // without a signature is never accepted.
  return VYRAFindPluginBySignature(signature.c_str()) != VYRA_NO_PLUGIN;
}

void LogUnreadable(const std::string& path, bool verbose) {
  if (!verbose) return;
  VYRALog("Failed: ", path,
          ".  (This file is missing, not a DLL or could not be loaded due to another missing DLL.)\n\n");
}

void LogNotOpened(const std::string& path, const std::string& error, bool verbose) {
  VYRALogLoadError(error);
  LogUnreadable(path, verbose);
}

void LogNoStart(const std::string& path) {
  VYRALog("Failed: ", path,
          ".  (This file is a loadable DLL but is missing the VyPluginStart callback.)\n\n");
}

void LogRefused(const std::string& path) {
  VYRALog("Failed: ", path, ". (The plugin refused to start by returning 0 from VyPluginStart.)\n\n");
}

void LogTaken(const std::string& path, const std::string& signature) {
  VYRALog("Warning: ", path, " Signature: ", signature, ". (A version of this plugin is already loaded.)\n");
}

// The files whose modules are being opened. A constructor may lead to the same file again, whose handle is
// not known then.
std::vector<VYRAFileIdentity> gOpening;

class StOpening {
 public:
  explicit StOpening(const VYRAFileIdentity& file) { gOpening.push_back(file); }
  ~StOpening() { gOpening.pop_back(); }
  StOpening(const StOpening&) = delete;
  StOpening& operator=(const StOpening&) = delete;
};

VYRAModuleFilter_f gModuleFilter = nullptr;
void* gModuleFilterRefcon = nullptr;

bool IsPassedOver(const std::string& path) {
  return gModuleFilter != nullptr && gModuleFilter(path.c_str(), gModuleFilterRefcon) == 0;
}

// A module on its way into the registry. Its record stands there before its first constructor runs, so that
// whatever the module registers belongs to it, and goes with it when it is turned down.
class Newcomer {
 public:
  explicit Newcomer(const std::string& modulePath) : path(modulePath), plugin(AppendRecord(modulePath)) {}

  VYRAPluginID ID() const { return plugin; }
  bool IsAccepted() const { return outcome == Outcome::accepted; }

  void OpenAndStart(const VYRAFileIdentity& file, std::vector<VYRAPluginID>* list);

  // Leaves no trace of a module that was not accepted, but in the log.
  void TurnDown(bool verbose, VYRALoaderSteps& steps);

 private:
  // False after a shutdown in the midst of it.
  bool IsHere() const { return VYRARegistryStays(plugin); }

  void Open(const VYRAFileIdentity& file);
  Start_f FindCallbacks();
  void Start(Start_f start, std::vector<VYRAPluginID>* list);
  void Accept(const Identity& identity, std::vector<VYRAPluginID>* list);

  void ShutOut() const;
  bool Remove(VYRALoaderSteps& steps);
  void CloseAsItself(VYRALoaderSteps& steps);
  void Close();

  const std::string& path;
  VYRAPluginID plugin;
  Outcome outcome = Outcome::thrown;  // unless it comes to another
  VYRALoadedDLL module;               // without its handle once the record has it
  ClosingModule closing;
  std::string signature;  // its own, or that of the plugin that runs
};

void Newcomer::Open(const VYRAFileIdentity& file) {
  const StOpening opening(file);
  const StActAs acting(plugin);
  const StModuleCall call(plugin, VYRA_CALL_OPENING, path.c_str());
  try {
    module = VYRALoadDLL(path.c_str());
  } catch (...) {
    // To be closed, or the next opening would find it without running its constructors.
    module.handle = VYRAHandleOfInterruptedOpening(path.c_str());
    throw;
  }
}

// Fills the record so far as that can be done without asking the plugin.
Start_f Newcomer::FindCallbacks() {
  Start_f start = nullptr;
  PluginRecord found;
  FindCallback(module.handle, "VyPluginStart", start);
  FindCallback(module.handle, "VyPluginStop", found.stop);
  FindCallback(module.handle, "VyPluginEnable", found.enable);
  FindCallback(module.handle, "VyPluginDisable", found.disable);
  FindCallback(module.handle, "VyPluginReceiveMessage", found.receiveMessage);
  if (start == nullptr || !IsHere()) return start;
  PluginRecord& record = VYRARegistryRecord(plugin);
  record.stage = PluginStage::starting;
  record.moduleHandle = std::exchange(module.handle, nullptr);
  record.stop = found.stop;
  record.enable = found.enable;
  record.disable = found.disable;
  record.receiveMessage = found.receiveMessage;
  return start;
}

void Newcomer::OpenAndStart(const VYRAFileIdentity& file, std::vector<VYRAPluginID>* list) {
  Open(file);
  if (module.handle == nullptr) {
    outcome = Outcome::notOpened;
    return;
  }
  if (const auto running = SignatureOfInstance(module.handle)) {
    signature = *running;
    outcome = Outcome::metAgain;
    return;
  }
  const Start_f start = FindCallbacks();
  if (!IsHere()) {
    outcome = Outcome::overtaken;
  } else if (start == nullptr) {
    outcome = Outcome::hasNoStart;
  } else {
    Start(start, list);
  }
}

void Newcomer::Start(Start_f start, std::vector<VYRAPluginID>* list) {
  Identity identity;
  {
    const StDispatchCallback dispatch(plugin, VYRA_CALL_START, StDispatchCallback::Ask::nothing);
    if (start(identity.name, identity.signature, identity.description) == 0) outcome = Outcome::refused;
  }
  if (outcome == Outcome::refused) return;
  if (!IsHere()) {
    outcome = Outcome::overtaken;
    return;
  }
  VYRASetDispatchedPlugin(VYRA_HOST_PLUGIN);
  signature = Identity::Text(identity.signature);
  VYRAIdentitySet(plugin, Identity::Text(identity.name), signature, path);
  if (IsSignatureTaken(signature)) {
    outcome = Outcome::taken;
  } else {
    Accept(identity, list);
  }
}

void Newcomer::Accept(const Identity& identity, std::vector<VYRAPluginID>* list) {
  PluginRecord& record = VYRARegistryRecord(plugin);
  record.stage = PluginStage::loaded;
  record.name = Identity::Text(identity.name);
  record.signature = signature;
  record.description = Identity::Text(identity.description);
  outcome = Outcome::accepted;
  if (list != nullptr) list->push_back(plugin);
  VYRALog("Loaded: ", path, " (", signature, ").\n\n");
}

// A plugin that did not start is on its way out from here on, also where it has enabled itself: the host may
// call from inside its log.
void Newcomer::ShutOut() const {
  if (!IsHere()) return;
  PluginRecord& record = VYRARegistryRecord(plugin);
  record.stage = PluginStage::leaving;
  record.stop = nullptr;  // which is not owed, whoever unloads it
  VYRARegistrySetEnabled(plugin, false);
}

// Removes what the module registered. An exception that this leads to is one of a callback that has had its
// turn, so the rest is tried again; false in the odd case that there is no end of them.
bool Newcomer::Remove(VYRALoaderSteps& steps) {
  constexpr int kMostExceptions = 1000;
  const auto remove = [&] {
    if (outcome == Outcome::overtaken) VYRALoaderRunCleanupHooks(plugin);  // its record is gone
    closing = VYRALoaderRemovePlugin(plugin, outcome == Outcome::taken);
  };
  for (int exceptions = 0; exceptions < kMostExceptions; ++exceptions) {
    if (steps.Take(remove)) return true;
  }
  return false;
}

// A plugin that started is there to the end: its destructors run under its ID.
void Newcomer::CloseAsItself(VYRALoaderSteps& steps) {
  VYRALoaderCloseRejectedModule(std::exchange(closing, {}), plugin);
  steps.Take([&] { VYRALoaderRunCleanupHooks(plugin); });
}

void Newcomer::TurnDown(bool verbose, VYRALoaderSteps& steps) {
  if (outcome == Outcome::hasNoStart) steps.Take([&] { LogNoStart(path); });
  VYRASetDispatchedPlugin(plugin);
  if (outcome == Outcome::refused || outcome == Outcome::thrown) ShutOut();
  if (outcome == Outcome::refused) steps.Take([&] { LogRefused(path); });
  const bool isRemoved = Remove(steps);
  if (isRemoved && outcome == Outcome::taken) CloseAsItself(steps);
  VYRALoaderGiveBackID(plugin);
  VYRASetDispatchedPlugin(VYRA_HOST_PLUGIN);
  if (isRemoved) Close();
  if (outcome == Outcome::notOpened) steps.Take([&] { LogNotOpened(path, module.error, verbose); });
  if (outcome == Outcome::taken || outcome == Outcome::metAgain) {
    steps.Take([&] { LogTaken(path, signature); });
  }
}

void Newcomer::Close() {
  if (outcome == Outcome::metAgain) {
    VYRAUnloadDLL(module.handle);  // counts down: the running plugin's own handle keeps the module open
    return;
  }
  if (module.handle != nullptr) closing = {module.handle, plugin, {}, false};
  VYRALoaderCloseRejectedModule(std::exchange(closing, {}), VYRA_NO_PLUGIN);
}

}  // namespace

VYRAPluginID LoadOnePlugin(const std::string& path, int verbose, std::vector<VYRAPluginID>* list) {
  if (!VYRALoaderMayLoad()) return VYRA_NO_PLUGIN;
  const StLoaderWork working;
  const VYRAModuleFile file = VYRALookAtModuleFile(path.c_str());
  if (!file.isReadable) {
    LogUnreadable(path, verbose != 0);
    return VYRA_NO_PLUGIN;
  }
  if (IsPassedOver(path)) return VYRA_NO_PLUGIN;
  if (!file.danger.empty()) {
    LogNotOpened(path, file.danger, verbose != 0);
    return VYRA_NO_PLUGIN;
  }
  if (std::ranges::find(gOpening, file.identity) != gOpening.end()) {
    LogTaken(path, "");
    return VYRA_NO_PLUGIN;
  }

  Newcomer newcomer(path);
  VYRALoaderSteps steps;
  steps.Take([&] { newcomer.OpenAndStart(file.identity, list); });
  if (!newcomer.IsAccepted()) newcomer.TurnDown(verbose != 0, steps);
  steps.End();
  return newcomer.IsAccepted() ? newcomer.ID() : VYRA_NO_PLUGIN;
}

void VYRASetModuleFilter(VYRAModuleFilter_f filter, void* refcon) {
  gModuleFilter = filter;
  gModuleFilterRefcon = refcon;
}
