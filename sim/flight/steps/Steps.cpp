#include "flight/steps/Steps.h"

#include <fmt/format.h>

namespace sim {

const std::vector<StepWord>& StepWords() {
  static const std::vector<StepWord> kWords = {
      LoadAircraftStep(), UnloadAircraftStep(), LoadSceneryStep(), SendMessageStep(),  BroadcastEventStep(),
      WriteDataRefStep(), ClickStep(),          PressKeyStep(),    PickMenuItemStep(), HoldCommandStep(),
  };
  return kWords;
}

std::string TakenBy(bool isTaken, std::string_view taker) {
  return isTaken ? fmt::format("{} took it", taker) : "left to the simulator";
}

}  // namespace sim
