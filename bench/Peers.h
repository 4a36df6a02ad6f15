// What a user would pick instead of the library. Each function returns an empty loop when vyra-bench was
// built without that peer.
#pragma once

#include <VYRAProcessing.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "Session.h"
#include "UsedHeap.h"

namespace bench {

// SimGear's property tree, with properties tied to a getter and a setter. For int, float and double.
template <class Value>
Loop SimGearRead(Value (*getter)());
template <class Value>
Loop SimGearWrite(Value (*getter)(), void (*setter)(Value), Value value);

// The same, tied to a variable: there is no owner's code to call.
template <class Value>
Loop SimGearReadVariable(Value* variable);

// SimGear's look-up of a path, one per iteration, in a tree with `names`, in the order of `asked`.
Loop SimGearFind(const std::vector<std::string>& names, const std::vector<std::string>& asked);

// A signal with `size` slots, emitted once per iteration.
Loop SigcPass(std::size_t size, VYRAFlightLoop_f callback, UsedHeap& heap);
Loop BoostSignalsPass(std::size_t size, VYRAFlightLoop_f callback, UsedHeap& heap);

// GLib's modules: opens all of `modules`, finds their five callbacks each, and closes them.
Loop GModuleCycle(const std::vector<std::filesystem::path>& modules);

// The callbacks that a module of a plugin exports.
inline constexpr const char* kModuleCallbacks[] = {"VyPluginStart", "VyPluginStop", "VyPluginEnable",
                                                   "VyPluginDisable", "VyPluginReceiveMessage"};

}  // namespace bench
