// The rooms of the steps, a file each. Each step is what the simulator's user would cause, and so mostly an
// event to the library. A new one is a file, and a row here and in the table in Steps.cpp.
#pragma once

#include "flight/Vocabulary.h"

namespace sim {

StepWord LoadAircraftStep();
StepWord UnloadAircraftStep();
StepWord LoadSceneryStep();
StepWord SendMessageStep();
StepWord BroadcastEventStep();
StepWord WriteDataRefStep();
StepWord ClickStep();
StepWord TypeKeyStep();
StepWord PressKeyStep();
StepWord ReleaseKeyStep();
StepWord MoveMouseStep();
StepWord PressMouseStep();
StepWord ReleaseMouseStep();
StepWord DragStep();
StepWord TurnWheelStep();
StepWord EnablePluginStep();
StepWord DisablePluginStep();
StepWord ReloadPluginsStep();
StepWord UnloadSceneryStep();
StepWord PickMenuItemStep();
StepWord HoldCommandStep();
StepWord PressCommandStep();
StepWord ReleaseCommandStep();
StepWord ResizeScreenStep();
StepWord BindHotKeyStep();
StepWord ScreenshotStep();
StepWord PlaceAtAirportStep();
StepWord LoadFlightPlanStep();
StepWord SaveFlightPlanStep();
StepWord LoadSituationStep();
StepWord SaveSituationStep();
StepWord WaitUntilStep();

// What several rooms share.

// "taken by org.skyvora.clock", or "left to the simulator".
std::string TakenBy(const std::string& taker);

// "x" and "y" of a place on the screen.
std::vector<Key> PixelKeys();

// The folder of a package of scenery, ending in "/". Throws InputError when there is none.
std::string SceneryFolder(const Entry& entry, std::string_view word, const FlightContext& context);

}  // namespace sim
