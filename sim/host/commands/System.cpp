// Time, view, scenery, plugins.
#include "VYRAPlugin.h"
#include "host/CameraServices.h"
#include "host/Events.h"
#include "host/SceneryServices.h"
#include "host/SpeechServices.h"
#include "host/commands/CommandRow.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr double kNearer = 1.0 / 1.05;
constexpr double kFarther = 1.05;

}  // namespace

std::vector<CommandRow> SystemCommands() {
  return {
      Once("sim/time/pause", "Let the world stand still, or go on",
           [] { gWorld.isPaused = !gWorld.isPaused; }),
      Once("sim/time/step", "Let the world go on for one frame while it stands still",
           [] { gWorld.stepsOnce = true; }),
      Once("sim/view/own_camera", "Take the camera back from a plugin that has it until the view changes",
           [] { TellLibrary(VYRA_EVENT_VIEW_CHANGED, nullptr); }),
      Repeated("sim/view/nearer", "Bring the simulator's camera nearer to the aircraft",
               [] { MoveChaseCamera(kNearer); }),
      Repeated("sim/view/farther", "Take the simulator's camera away from the aircraft",
               [] { MoveChaseCamera(kFarther); }),
      Once("sim/view/behind", "Turn the simulator's camera to behind the aircraft", TurnChaseCameraBack),
      Once("sim/scenery/reload", "Read all scenery anew", ReloadScenery),
      Once("sim/speech/silence", "Take what was spoken off the screen", Silence),
      Once("sim/plugins/reload", "Reload all plugins at the end of the next pass", VYRAReloadPlugins),
  };
}

}  // namespace sim
