#include "VYRAPlugin.h"
#include "flight/steps/Steps.h"
#include "host/FlightBoard.h"

namespace sim {
namespace {

Effect Read(const Entry& /*entry*/, const FlightContext& /*context*/) {
  return [] {
    CallHook("VYRAReloadPlugins", VYRAReloadPlugins);
    return Outcome{true, "reload of all plugins asked for"};
  };
}

}  // namespace

StepWord ReloadPluginsStep() {
  return {
      {.key = TrueKey("reloadPlugins",
                      "unloads all plugins, those of aircraft and scenery too, and loads them anew, those "
                      "of scenery not; it happens in this frame's first pass"),
       .others = {}},
      Read};
}

}  // namespace sim
