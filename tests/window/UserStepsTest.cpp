// What a user does over some time, as steps of a flight file without a window: so a recorded flight is flown
// again as it was.
#include <gtest/gtest.h>

#include "SimulatorRun.h"

namespace {

using nlohmann::json;

class UserSteps : public testing::Test {
 protected:
  UserSteps() { folder.Install("listener", "listener/64/lin.vyp"); }

  void Fly(const char* flight) {
    const SimulatorRun run = folder.FlyFile(20, json::parse(flight));
    EXPECT_EQ(run.exitCode, 0) << run.output << run.error;
  }

  const SimulatorFolder folder;
};

TEST_F(UserSteps, KeysAndCommandsAreHeldUntilTheyAreReleased) {
  // A press moves the throttle by 0.01, and so does each frame that it is held.
  Fly(R"({"steps": [
      {"frame": 1, "writeDataRef": {"name": "sim/aircraft/throttle_ratio", "value": 0.5}},
      {"frame": 2, "pressKey": "Page Up"},
      {"frame": 3, "pressKey": "Page Up"},
      {"frame": 4, "releaseKey": "Page Up"},
      {"frame": 10, "pressCommand": "sim/throttle/decrease"},
      {"frame": 12, "releaseCommand": "sim/throttle/decrease"}],
    "expectations": [
      {"frame": 9, "dataRef": "sim/aircraft/throttle_ratio", "equals": 0.53, "tolerance": 0.0001},
      {"after": "end", "dataRef": "sim/aircraft/throttle_ratio", "equals": 0.5, "tolerance": 0.0001}]})");
}

TEST_F(UserSteps, APausedWorldGoesOnByOneFrame) {
  Fly(R"({"steps": [
      {"frame": 2, "key": "F12"},
      {"frame": 10, "key": "."}],
    "expectations": [
      {"frame": 9, "dataRef": "sim/aircraft/latitude_deg", "changesBy": 0, "since": 2},
      {"frame": 10, "dataRef": "sim/time/is_paused", "equals": 1},
      {"frame": 15, "dataRef": "sim/aircraft/x_m", "changesBy": 0, "since": 10},
      {"frame": 15, "dataRef": "sim/aircraft/z_m", "changesBy": 0, "since": 10},
      {"frame": 10, "never": 5, "dataRef": "sim/aircraft/z_m", "changesBy": 0, "since": 9}]})");
}

TEST_F(UserSteps, ScreenHasTheSizeOfTheWindowAndKeysTheirCharacters) {
  Fly(R"({"steps": [
      {"frame": 2, "resizeScreen": {"width": 900, "height": 700}},
      {"frame": 3, "click": {"x": 100, "y": 100}},
      {"frame": 4, "key": "[", "character": 252}],
    "expectations": [
      {"after": "end", "logContains": "listener: screen 900 by 700", "times": 1},
      {"after": "end", "logContains": "listener: key 252, flags 0, virtual key 179", "times": 1}]})");
}

}  // namespace
