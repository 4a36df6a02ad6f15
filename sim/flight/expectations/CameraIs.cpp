#include <fmt/core.h>
#include <optional>

#include "flight/expectations/Expectations.h"
#include "host/CameraServices.h"

namespace sim {
namespace {

std::string_view Owner(bool isPlugin) { return isPlugin ? "a plugin's" : "the simulator's"; }

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const bool ofPlugin = entry.Text("camera") == "plugin";
  std::optional<double> wantedZoom;
  if (entry.Has("zoom")) wantedZoom = entry.Number("zoom");
  return {.text = fmt::format("camera is {}{}", Owner(ofPlugin),
                              wantedZoom ? fmt::format(" at zoom {:.9g}", *wantedZoom) : ""),
          .check = [ofPlugin, wantedZoom]() -> Finding {
            const auto zoom = static_cast<double>(Camera().zoom);
            const bool zoomHolds = !wantedZoom || SameNumber(zoom, *wantedZoom);
            return {PluginHasCamera() == ofPlugin && zoomHolds,
                    fmt::format("{} at zoom {:.9g}", Owner(PluginHasCamera()), zoom)};
          }};
}

}  // namespace

ExpectationWord CameraIsExpectation() {
  return {{.key = ChoiceKey("camera", {"plugin", "simulator"}, "that is who set this frame's camera"),
           .others = {Optional(NumberKey("zoom", "and it has this zoom, in single precision"))}},
          Read};
}

}  // namespace sim
