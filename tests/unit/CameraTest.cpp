// The camera: who controls it, for how long, and what the host gets of it.
#include "VYRACamera.h"

#include <array>

#include "PluginFixture.h"
#include "VYRADisplayCameraInternal.h"
#include "VYRALoaderLifecycle.h"

namespace {

class Camera : public PluginFixture {
 protected:
  static int Control(VYRACameraPosition* position, int isLosing, void*) {
    trace.push_back((isLosing != 0 ? "loses " : "asked ") + std::to_string(VYRAGetMyID()));
    EXPECT_EQ(position == nullptr, isLosing != 0);
    if (position != nullptr) {
      position->x += 1;
      position->zoom = 9;
    }
    return answer;
  }

  // The host's camera of a frame, 1 to 7, after the hook; its result in front.
  static std::array<float, 8> Frame() {
    std::array<float, 8> v = {0, 1, 2, 3, 4, 5, 6, 7};
    v[0] = static_cast<float>(VYRAAdjustCamera(&v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7]));
    return v;
  }

  static constexpr std::array<float, 8> kUntouched = {1, 1, 2, 3, 4, 5, 6, 7};
  static inline int answer = 1;
  VYRAPluginID plugin = AddPlugin("p");
};

TEST_F(Camera, ControllerSetsThePositionUntilItAnswersNo) {
  EXPECT_EQ(Frame(), kUntouched);
  RunAs(plugin, [] { VYRAControlCamera(2, Control, nullptr); });
  EXPECT_EQ(Frame(), (std::array<float, 8>{0, 2, 2, 3, 4, 5, 6, 9}));
  int howLong = 0;
  EXPECT_EQ(VYRAIsCameraBeingControlled(&howLong), 1);
  EXPECT_EQ(howLong, 2);
  EXPECT_EQ(VYRAIsCameraBeingControlled(nullptr), 1);
  answer = 2;
  EXPECT_EQ(Frame()[0], -1) << "other results pass through as they come";
  answer = 0;
  EXPECT_EQ(Frame(), kUntouched);
  EXPECT_EQ(Frame(), kUntouched);
  EXPECT_EQ(VYRAIsCameraBeingControlled(&howLong), 0);
  EXPECT_EQ(trace.size(), 3U);
}

TEST_F(Camera, ChangeOfViewEndsOnlyWhatWasTakenUntilThen) {
  for (const int howLong : {2, 1}) {
    RunAs(plugin, [&] { VYRAControlCamera(howLong, Control, nullptr); });
    VYRAReleaseCamera();
    EXPECT_EQ(VYRAIsCameraBeingControlled(nullptr), howLong == 2 ? 1 : 0);
  }
  EXPECT_EQ(trace, Lines{"loses 1"});
}

TEST_F(Camera, DisabledControllerIsToldAndReplacedOrGivenUpControlIsNot) {
  const VYRAPluginID other = AddPlugin("q");
  RunAs(other, [] { VYRAControlCamera(2, Control, nullptr); });
  RunAs(plugin, [] { VYRAControlCamera(2, Control, nullptr); });
  VYRADisablePlugin(other);
  EXPECT_EQ(trace, Lines());
  VYRADisablePlugin(plugin);
  EXPECT_EQ(trace, Lines{"loses 1"});
  EXPECT_EQ(Frame(), kUntouched);
  VYRAEnablePlugin(plugin);
  RunAs(plugin, [] {
    VYRAControlCamera(2, Control, nullptr);
    VYRADontControlCamera();
  });
  EXPECT_EQ(VYRAIsCameraBeingControlled(nullptr), 0);
  UnloadOnePlugin(plugin);
  EXPECT_EQ(trace, Lines{"loses 1"});
}

TEST_F(Camera, ControlEndsWhenItsLoserThrowsOrIsReleasedAgainWhileItIsTold) {
  RunAs(plugin, [] {
    VYRAControlCamera(
        2,
        [](VYRACameraPosition*, int, void*) -> int {
          trace.push_back("loses " + std::to_string(VYRAGetMyID()));
          EXPECT_EQ(VYRAIsCameraBeingControlled(nullptr), 1);
          VYRACameraDisableHook(VYRAGetMyID());
          throw 1;
        },
        nullptr);
  });
  EXPECT_THROW(VYRADisablePlugin(plugin), int);
  EXPECT_EQ(VYRAIsCameraBeingControlled(nullptr), 0);
  VYRADisablePlugin(plugin);
  EXPECT_EQ(trace, Lines{"loses 1"});
}

TEST_F(Camera, NullControlAndARefusedControllerEndControl) {
  RunAs(plugin, [] { VYRAControlCamera(1, nullptr, nullptr); });
  EXPECT_EQ(Frame(), kUntouched);
  EXPECT_EQ(VYRAIsCameraBeingControlled(nullptr), 0);
  RunAs(plugin, [] { VYRAControlCamera(1, nullptr, nullptr); });
  VYRAReleaseCamera();
  RunAs(plugin, [] { VYRAControlCamera(1, Control, nullptr); });
  VYRARegistrySetEnabled(plugin, false);
  EXPECT_EQ(Frame(), kUntouched);
  VYRARegistrySetEnabled(plugin, true);
  EXPECT_EQ(Frame(), kUntouched);
  EXPECT_EQ(trace, Lines());
  VYRAReadCameraPosition(nullptr);
}

}  // namespace
