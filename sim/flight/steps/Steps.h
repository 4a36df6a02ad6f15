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
StepWord PressKeyStep();
StepWord PickMenuItemStep();
StepWord HoldCommandStep();

// Who took a click or a key.
std::string TakenBy(bool isTaken, std::string_view taker);

}  // namespace sim
