#include <fmt/core.h>

#include "VYRAPlugin.h"
#include "flight/expectations/Expectations.h"

namespace sim {
namespace {

std::string StateOf(const std::string& signature) {
  const VYRAPluginID plugin = VYRAFindPluginBySignature(signature.c_str());
  if (plugin == VYRA_NO_PLUGIN) return "absent";
  return VYRAIsPluginEnabled(plugin) != 0 ? "enabled" : "disabled";
}

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string signature = entry.Text("plugin");
  const std::string wanted = entry.Text("is");
  return {.text = fmt::format("plugin {} is {}", signature, wanted),
          .check = [signature, wanted]() -> Finding {
            const std::string state = StateOf(signature);
            return {state == (wanted == "loaded" ? "disabled" : wanted), state};
          }};
}

}  // namespace

ExpectationWord PluginIsExpectation() {
  return {
      {.key = TextKey("plugin", "the plugin with this signature is in this state"),
       .others = {ChoiceKey(
           "is", {"loaded", "enabled", "disabled", "absent"},
           "exactly so: `loaded`, as the headers call it, is `disabled`, and an enabled one is neither")}},
      Read};
}

}  // namespace sim
