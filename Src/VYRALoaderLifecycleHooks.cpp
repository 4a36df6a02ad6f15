#include "VYRALoaderLifecycleHooks.h"

#include "VYRADataAccessInternal.h"
#include "VYRADisplayCameraInternal.h"
#include "VYRADisplayInternal.h"
#include "VYRALoaderSteps.h"
#include "VYRAMenusInternal.h"
#include "VYRAPlanesInternal.h"
#include "VYRAProcessingInternal.h"
#include "VYRASceneryObjects.h"
#include "VYRAUtilitiesCommands.h"

namespace {

struct SubsystemHooks {
  void (*disable)(VYRAPluginID plugin);  // null: disabling a plugin does not concern the subsystem
  void (*cleanup)(VYRAPluginID plugin);
};

// In the order in which the subsystems let go of a plugin. Disabling follows it too.
constexpr SubsystemHooks kSubsystemHooks[] = {
    {nullptr, VYRACommandCleanupHook},    {VYRADisplayDisableHook, VYRADisplayCleanupHook},
    {nullptr, VYRAProcessingCleanupHook}, {VYRACameraDisableHook, VYRACameraCleanupHook},
    {nullptr, VYRAMenuCleanupHook},       {VYRAPlaneDisableHook, VYRAPlaneCleanupHook},
    {nullptr, VYRADataRefsCleanupHook},   {nullptr, VYRASceneryCleanupHook},
};

}  // namespace

void VYRALoaderRunDisableHooks(VYRAPluginID plugin) {
  VYRALoaderSteps steps;
  for (const SubsystemHooks& hooks : kSubsystemHooks) {
    if (hooks.disable != nullptr) steps.Take([&] { hooks.disable(plugin); });
  }
  steps.End();
}

void VYRALoaderRunCleanupHooks(VYRAPluginID plugin) {
  for (const SubsystemHooks& hooks : kSubsystemHooks) hooks.cleanup(plugin);
}
