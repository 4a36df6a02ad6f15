#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "VYRAPlugin.h"
#include "VYRAUtilities.h"
#include "flight/expectations/Expectations.h"
#include "host/Inventory.h"

namespace sim {
namespace {

constexpr std::string_view kNobody = "nobody";

std::vector<std::string> HandlersOf(const std::string& command) {
  const VYRACommandRef reference = VYRAFindCommand(command.c_str());
  std::vector<std::string> signatures;
  for (const VYRACommandHandlerInfo& handler : CommandHandlers(reference)) {
    char signature[VYRA_PLUGIN_INFO_SIZE] = "";
    VYRAGetPluginInfo(handler.plugin, nullptr, nullptr, signature, nullptr);
    signatures.emplace_back(signature);
  }
  return signatures;
}

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string command = entry.Text("command");
  const std::string wanted = entry.Text("handledBy");
  return {.text = fmt::format("command {} is handled by {}", command, wanted),
          .check = [command, wanted]() -> Finding {
            const std::vector<std::string> found = HandlersOf(command);
            const bool holds = wanted == kNobody ? found.empty() : std::ranges::count(found, wanted) > 0;
            return {holds, found.empty() ? std::string(kNobody) : fmt::format("{}", fmt::join(found, ", "))};
          }};
}

}  // namespace

ExpectationWord HandledByExpectation() {
  return {
      {.key = TextKey("command", "the command of this name"),
       .others = {TextKey("handledBy", "has a handler of the plugin with this signature, or of `nobody`")}},
      Read};
}

}  // namespace sim
