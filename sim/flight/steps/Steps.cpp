#include "flight/steps/Steps.h"

#include "host/UserInput.h"
#include "view/Screen.h"

namespace sim {

const std::vector<StepWord>& StepWords() {
  static const std::vector<StepWord> kWords = {
      LoadAircraftStep(),  UnloadAircraftStep(), PlaceAtAirportStep(), LoadSceneryStep(),
      UnloadSceneryStep(), EnablePluginStep(),   DisablePluginStep(),  ReloadPluginsStep(),
      SendMessageStep(),   BroadcastEventStep(), WriteDataRefStep(),   HoldCommandStep(),
      PickMenuItemStep(),  TypeKeyStep(),        PressKeyStep(),       ReleaseKeyStep(),
      ClickStep(),         MoveMouseStep(),      PressMouseStep(),     ReleaseMouseStep(),
      DragStep(),          TurnWheelStep(),      LoadFlightPlanStep(), SaveFlightPlanStep(),
      LoadSituationStep(), SaveSituationStep(),  WaitUntilStep(),      ScreenshotStep(),
  };
  return kWords;
}

std::string TakenBy(const std::string& taker) {
  return taker == kSimulatorTook ? "left to the simulator" : "taken by " + taker;
}

std::vector<Key> PixelKeys() {
  return {WholeNumberKey("x", 0, gScreen.Width() - 1, "pixels from the screen's left edge"),
          WholeNumberKey("y", 0, gScreen.Height() - 1, "pixels from its bottom")};
}

}  // namespace sim
