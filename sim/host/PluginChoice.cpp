#include "host/PluginChoice.h"

#include <algorithm>
#include <map>
#include <optional>

#include "VYRAHost.h"
#include "choice/PluginPattern.h"
#include "choice/Signature.h"
#include "report/Event.h"
#include "world/World.h"

namespace sim {
namespace {

PluginChoice gChoice;
std::map<std::string, bool> gPassedOver;  // modules that the library came to

bool IsAdmin(const std::string& module) {
  return EntryOf(module) == gWorld.systemPath + "Resources/plugins/PluginAdmin";
}

// Decides about a module, and finds out its signature at most once.
class Decision {
 public:
  Decision(const PluginChoice& itsChoice, const std::string& modulePath)
      : choice(itsChoice), module(modulePath) {}

  bool PassesOver() {
    if (choice.safeMode && !IsAdmin(module)) return true;
    if (FitsAny(choice.skip)) return true;
    return !choice.only.empty() && !FitsAny(choice.only);
  }

  PluginReport Entry() const {
    PluginReport plugin;
    plugin.signature = signature.value_or("");
    plugin.path = module;
    plugin.state = "passed over";
    return plugin;
  }

 private:
  bool FitsAny(const std::vector<std::string>& patterns) {
    return std::ranges::any_of(patterns, [this](const std::string& pattern) {
      return PatternFits(pattern, module, gWorld.systemPath, [this] {
        if (!signature) signature = SignatureOf(module);
        return *signature;
      });
    });
  }

  const PluginChoice& choice;
  const std::string& module;
  std::optional<std::string> signature;
};

int MayBeLoaded(const char* path, void* /*refcon*/) {
  const auto [entry, isNew] = gPassedOver.try_emplace(path, false);
  if (isNew) {
    Decision decision(gChoice, entry->first);
    entry->second = decision.PassesOver();
    if (entry->second) TellEvent(PluginTold{decision.Entry()});
  }
  return entry->second ? 0 : 1;
}

}  // namespace

bool PassesOver(const PluginChoice& choice, const std::string& module) {
  return Decision(choice, module).PassesOver();
}

void FlyWith(const PluginChoice& choice) {
  gChoice = choice;
  const bool isOfAll = !choice.safeMode && choice.skip.empty() && choice.only.empty();
  if (!isOfAll) VYRASetModuleFilter(MayBeLoaded, nullptr);
}

bool IsPassedOver(const std::string& module) {
  const auto found = gPassedOver.find(module);
  return found != gPassedOver.end() && found->second;
}

}  // namespace sim
