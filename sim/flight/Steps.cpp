// Each step is what the simulator's user would cause, and so mostly an event to the library.
#include "flight/Steps.h"

#include <fmt/format.h>

#include <cctype>
#include <filesystem>
#include <string_view>
#include <vector>

#include "VYRAHost.h"
#include "host/CommandServices.h"
#include "host/FlightBoard.h"
#include "host/MenuServices.h"
#include "host/PluginList.h"
#include "report/Activity.h"
#include "view/Screen.h"
#include "world/World.h"

namespace sim {
namespace {

void* const kUsersPlane = nullptr;  // plane 0, as an event's parameter

void SendEvent(int event, void* param) {
  CallHook("VYRAEventHook", VYRAEventHook, event, param, nullptr, static_cast<float>(gWorld.elapsedSeconds),
           0.0F);
}

std::string AircraftName() { return std::filesystem::path(gWorld.modelPath).stem().string(); }

std::string TakenBy(bool isTaken, std::string_view taker) {
  return isTaken ? fmt::format("{} took it", taker) : "left to the simulator";
}

struct Performer {
  Outcome operator()(const UnloadAircraft& /*step*/) const {
    if (gWorld.modelPath.empty()) return {false, "no aircraft is loaded that could be unloaded"};
    const std::string name = AircraftName();
    const std::vector<PluginInfo> before = ListPlugins();
    SendEvent(VYRA_EVENT_PLANE_UNLOADED, kUsersPlane);
    // Not earlier: plugins that hear of the event may still ask for the model.
    gWorld.modelPath.clear();
    return {true,
            fmt::format("aircraft {} unloaded: {} gone", name, DescribeDifference(before, ListPlugins()))};
  }

  Outcome operator()(const LoadAircraft& step) const {
    if (!gWorld.modelPath.empty()) (*this)(UnloadAircraft{});
    gWorld.modelPath = step.modelPath;
    const std::vector<PluginInfo> before = ListPlugins();
    SendEvent(VYRA_EVENT_PLANE_LOADED, kUsersPlane);
    return {true,
            fmt::format("aircraft {} loaded: {}", AircraftName(), DescribeDifference(ListPlugins(), before))};
  }

  Outcome operator()(const LoadScenery& step) const {
    std::string folder = step.folder;
    const std::vector<PluginInfo> before = ListPlugins();
    SendEvent(VYRA_EVENT_SCENERY_PACKAGE, folder.data());
    const std::string name = std::filesystem::path(step.folder).parent_path().filename().string();
    return {true, fmt::format("scenery {} loaded: {}", name, DescribeDifference(ListPlugins(), before))};
  }

  Outcome operator()(SendMessage& step) const {
    const VYRAPluginID plugin = VYRAFindPluginBySignature(step.signature.c_str());
    if (plugin == VYRA_NO_PLUGIN) return {false, fmt::format("no plugin {} for a message", step.signature)};
    CallHook("VYRASendMessageToPlugin", VYRASendMessageToPlugin, plugin, step.message,
             step.text ? step.text->data() : nullptr);
    return {true, fmt::format("message {} sent to {}", step.message, step.signature)};
  }

  Outcome operator()(const BroadcastEvent& step) const {
    SendEvent(step.event, nullptr);
    return {true, fmt::format("event {} told to all plugins", step.event)};
  }

  Outcome operator()(const WriteValue& step) const {
    const std::string problem = WriteDataRef(step.dataRef, step.value);
    if (!problem.empty()) return {false, fmt::format("{} cannot be written: {}", step.dataRef, problem)};
    return {true, fmt::format("{} set to {}", step.dataRef, ToText(step.value))};
  }

  Outcome operator()(const Click& step) const {
    gScreen.mouseX = step.x;
    gScreen.mouseY = step.y;
    ++gActivity.clicks;
    const bool isTaken = CallHook("VYRAMouseClickHook", VYRAMouseClickHook, step.x, step.y, 1) == 0;
    CallHook("VYRAMouseClickHook", VYRAMouseClickHook, step.x, step.y, 0);
    return {true, fmt::format("click at {}, {}: {}", step.x, step.y, TakenBy(isTaken, "a window"))};
  }

  Outcome operator()(const PressKey& step) const {
    ++gActivity.keys;
    const int virtualKey = std::toupper(static_cast<unsigned char>(step.key));
    const bool isTaken =
        CallHook("VYRAKeyPressHook", VYRAKeyPressHook, step.key, step.flags, virtualKey) == 0;
    return {true, fmt::format("key {}: {}", step.key, TakenBy(isTaken, "a plugin"))};
  }

  Outcome operator()(const PickItem& step) const {
    const std::string problem = PickMenuItem(step.way);
    if (!problem.empty()) return {false, fmt::format("menu item {} not picked: {}", step.way, problem)};
    return {true, fmt::format("menu item {} picked", step.way)};
  }

  Outcome operator()(const UseCommand& step) const {
    const std::string problem = HoldCommand(step.name, step.passes);
    if (!problem.empty()) return {false, fmt::format("command {} not pressed: {}", step.name, problem)};
    return {true, fmt::format("command {} held for {} pass{}", step.name, step.passes,
                              step.passes == 1 ? "" : "es")};
  }
};

}  // namespace

Outcome CarryOut(Action& action) { return std::visit(Performer{}, action); }

}  // namespace sim
