#include <fmt/core.h>
#include <limits>
#include <optional>

#include "VYRAPlugin.h"
#include "flight/steps/Steps.h"
#include "host/FlightBoard.h"

namespace sim {
namespace {

constexpr int kAnyInt = std::numeric_limits<int>::max();

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const Entry send = entry.Object("sendMessage");
  const std::string signature = send.Text("to");
  const int message = send.WholeNumber("message");
  std::optional<std::string> parameter;
  if (send.Has("text")) parameter = send.Text("text");
  // Mutable: the text goes to a plugin, which may write into it.
  return [signature, message, parameter]() mutable -> Outcome {
    const VYRAPluginID plugin = VYRAFindPluginBySignature(signature.c_str());
    if (plugin == VYRA_NO_PLUGIN) return {false, fmt::format("no plugin {} for a message", signature)};
    CallHook("VYRASendMessageToPlugin", VYRASendMessageToPlugin, plugin, message,
             parameter ? parameter->data() : nullptr);
    return {true, fmt::format("message {} sent to {}", message, signature)};
  };
}

}  // namespace

StepWord SendMessageStep() {
  return {{.key = ObjectKey("sendMessage",
                            {TextKey("to", "the plugin's signature"),
                             WholeNumberKey("message", -kAnyInt, kAnyInt, "the message's number"),
                             Optional(TextKey("text", "the parameter; null without it"))},
                            "sends a message from the simulator"),
           .others = {}},
          Read};
}

}  // namespace sim
