#include "VYRALoaderLifecycleHooks.h"

#include <algorithm>
#include <iterator>

#include "VYRADataAccessInternal.h"
#include "VYRADisplayCameraInternal.h"
#include "VYRADisplayInternal.h"
#include "VYRAMenusInternal.h"
#include "VYRAPlanesInternal.h"
#include "VYRAProcessingInternal.h"
#include "VYRASceneryObjects.h"
#include "VYRAUtilitiesCommands.h"

namespace {

// The order in which the subsystems let go of a plugin. Disabling follows it too, over the rows that have a
// disable hook.
enum class Place { commands, display, flightLoops, camera, menus, planes, dataRefs, scenery };

struct SubsystemHooks {
  Place place;
  void (*disable)(int plugin);  // null: disabling a plugin does not concern the subsystem
  void (*cleanup)(int plugin);
};

constexpr SubsystemHooks kSubsystemHooks[] = {
    {Place::commands, nullptr, VYRACommandCleanupHook},
    {Place::display, VYRADisplayDisableHook, VYRADisplayCleanupHook},
    {Place::flightLoops, nullptr, VYRAProcessingCleanupHook},
    {Place::camera, VYRACameraDisableHook, VYRACameraCleanupHook},
    {Place::menus, nullptr, VYRAMenuCleanupHook},
    {Place::planes, VYRAPlaneDisableHook, VYRAPlaneCleanupHook},
    {Place::dataRefs, nullptr, VYRADataRefsCleanupHook},
    {Place::scenery, nullptr, VYRASceneryCleanupHook},
};

constexpr bool ComesBefore(const SubsystemHooks& left, const SubsystemHooks& right) {
  return left.place < right.place;
}
static_assert(std::is_sorted(std::begin(kSubsystemHooks), std::end(kSubsystemHooks), ComesBefore));

}  // namespace

void VYRALoaderRunDisableHooks(int plugin) {
  for (const SubsystemHooks& hooks : kSubsystemHooks) {
    if (hooks.disable != nullptr) hooks.disable(plugin);
  }
}

void VYRALoaderRunCleanupHooks(int plugin) {
  for (const SubsystemHooks& hooks : kSubsystemHooks) hooks.cleanup(plugin);
}
