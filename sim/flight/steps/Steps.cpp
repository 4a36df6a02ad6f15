#include "flight/steps/Steps.h"

#include "host/UserInput.h"
#include "view/Screen.h"

namespace sim {

const std::vector<StepWord>& StepWords() {
  static const std::vector<StepWord> kWords = {
      LoadAircraftStep(),  UnloadAircraftStep(), PlaceAtAirportStep(), LoadSceneryStep(),
      UnloadSceneryStep(), EnablePluginStep(),   DisablePluginStep(),  ReloadPluginsStep(),
      SendMessageStep(),   BroadcastEventStep(), WriteDataRefStep(),   HoldCommandStep(),
      PressCommandStep(),  ReleaseCommandStep(), PickMenuItemStep(),   TypeKeyStep(),
      PressKeyStep(),      ReleaseKeyStep(),     BindHotKeyStep(),     ClickStep(),
      MoveMouseStep(),     PressMouseStep(),     ReleaseMouseStep(),   DragStep(),
      TurnWheelStep(),     ResizeScreenStep(),   LoadFlightPlanStep(), SaveFlightPlanStep(),
      LoadSituationStep(), SaveSituationStep(),  WaitUntilStep(),      ScreenshotStep(),
  };
  return kWords;
}

std::string TakenBy(const std::string& taker) {
  return taker == kSimulatorTook ? "left to the simulator" : "taken by " + taker;
}

std::vector<Key> PixelKeys() {
  // Not held against the screen's size: a window has another one each time that it is resized.
  return {WholeNumberKey("x", 0, Screen::kLargestSide - 1, "pixels from the screen's left edge"),
          WholeNumberKey("y", 0, Screen::kLargestSide - 1, "pixels from its bottom")};
}

}  // namespace sim
