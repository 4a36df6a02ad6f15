// Enabling and disabling a plugin, as a user does who switches it on or off.
#include <fmt/core.h>

#include "VYRAPlugin.h"
#include "flight/steps/Steps.h"
#include "host/FlightBoard.h"

namespace sim {
namespace {

Outcome Enable(const std::string& signature) {
  const VYRAPluginID plugin = VYRAFindPluginBySignature(signature.c_str());
  if (plugin == VYRA_NO_PLUGIN) return {false, fmt::format("no plugin {} to be enabled", signature)};
  if (CallHook("VYRAEnablePlugin", VYRAEnablePlugin, plugin) == 0)
    return {false, fmt::format("plugin {} refused to be enabled", signature)};
  return {true, fmt::format("plugin {} enabled", signature)};
}

Outcome Disable(const std::string& signature) {
  const VYRAPluginID plugin = VYRAFindPluginBySignature(signature.c_str());
  if (plugin == VYRA_NO_PLUGIN) return {false, fmt::format("no plugin {} to be disabled", signature)};
  CallHook("VYRADisablePlugin", VYRADisablePlugin, plugin);
  return {true, fmt::format("plugin {} disabled", signature)};
}

}  // namespace

StepWord EnablePluginStep() {
  return {{.key = TextKey("enablePlugin", "enables the plugin with this signature"), .others = {}},
          [](const Entry& entry, const FlightContext& /*context*/) -> Effect {
            return [signature = entry.Text("enablePlugin")] { return Enable(signature); };
          }};
}

StepWord DisablePluginStep() {
  return {{.key = TextKey("disablePlugin", "disables it"), .others = {}},
          [](const Entry& entry, const FlightContext& /*context*/) -> Effect {
            return [signature = entry.Text("disablePlugin")] { return Disable(signature); };
          }};
}

}  // namespace sim
