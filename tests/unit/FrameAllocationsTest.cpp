// A frame in which plugins do what plugins do takes no memory from the heap. Memory that is taken and given
// back in every frame costs little in a test and a stutter in a flight.
#include <array>

#include "Allocations.h"
#include "PluginFixture.h"
#include "VYRACamera.h"
#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRALoaderFeatures.h"
#include "VYRAProcessing.h"
#include "VYRAUtilities.h"

namespace {

// What the callbacks of a frame were called for, so that a frame that does nothing is not taken for a cheap
// one.
enum Work {
  kLoop,
  kAccess,
  kChange,
  kDraw,
  kWindow,
  kMouse,
  kKey,
  kHotKey,
  kCommand,
  kCamera,
  kMessage,
  kKinds
};
std::array<int, kKinds> gDone;

void Do(Work work) { ++gDone[work]; }

VYRADataRef gValue;
VYRADataRef gShared;
float gStored = 0;

float FlyLoop(float, float, int, void*) {
  VYRASetDataf(gValue, VYRAGetDataf(gValue) + 1);
  VYRASetDatai(gShared, VYRAGetDatai(gShared) + 1);
  if (VYRAFindDataRef("test/a value with a name of some length") == gValue &&
      VYRAIsDataRefGood(gValue) != 0) {
    Do(kLoop);
  }
  VYRASendMessageToPlugin(VYRA_NO_PLUGIN, 1234, nullptr);
  return -1;
}

class Frame : public PluginFixture {
 protected:
  static constexpr int kPlugins = 3;
  static inline char command = 0;

  Frame() {
    // The recording host notes calls, which takes memory; these do not.
    gHost.services.GetElapsedTime = [] { return 1.0F; };
    gHost.services.GetMouseLocation = [](int* x, int* y, int) { *x = *y = 50; };
    gHost.services.CommandBegin = [](VYRACommandRef) {};
    gHost.services.CommandRepeat = [](VYRACommandRef) {};
    gHost.services.CommandButtonPress = [](const int*, int, int) {};
    gHost.services.HostReceiveMessage = [](VYRAPluginID, int, void*) {};
    Record(VYRA_HOST_PLUGIN).receiveMessage = gHost.services.HostReceiveMessage;
    for (int i = 0; i < kPlugins; ++i) {
      const VYRAPluginID plugin = AddPlugin(std::to_string(i));
      Record(plugin).receiveMessage = [](VYRAPluginID, int, void*) { Do(kMessage); };
      RunAs(plugin, [=] { Register(i); });
    }
  }

  static void Register(int index) {
    if (index == 0) {
      gValue = VYRARegisterDataAccessor(
          "test/a value with a name of some length", VYRA_TYPE_FLOAT, 1, nullptr, nullptr,
          [](void*) { return (Do(kAccess), gStored); },
          [](void*, float value) { (Do(kAccess), gStored = value); }, nullptr, nullptr, nullptr, nullptr,
          nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    }
    VYRAShareData(
        "test/shared", VYRA_TYPE_INT, [](void*) { Do(kChange); }, nullptr);
    gShared = VYRAFindDataRef("test/shared");
    VYRARegisterFlightLoopCallback(FlyLoop, -1, nullptr);
    for (const int before : {0, 1}) {
      VYRARegisterDrawCallback([](int, int, void*) { return (Do(kDraw), 1); }, 50, before, &gDone[0] + index);
      VYRARegisterKeySniffer([](char, int, char, void*) { return (Do(kKey), 1); }, before, &gDone[0] + index);
    }
    const auto click = [](VYRAWindowID, int, int, int status, void*) {
      return (Do(kMouse), status == VYRA_MOUSE_DOWN ? 1 : 0);
    };
    const auto cursor = [](VYRAWindowID, int, int, void*) { return (Do(kMouse), 0); };
    const auto wheel = [](VYRAWindowID, int, int, int, int, void*) { return (Do(kMouse), 0); };
    const auto draw = [](VYRAWindowID, void*) { Do(kWindow); };
    const VYRAWindowCreateParams window = {sizeof window, 0,     100,     100,    0,     1,
                                           draw,          click, nullptr, cursor, wheel, nullptr};
    VYRACreateWindowEx(&window);
    VYRARegisterHotKey(
        'H', 8, "hot", [](void*) { Do(kHotKey); }, nullptr);
    for (const int before : {0, 1}) {
      VYRARegisterCommandHandler(
          &command, [](VYRACommandRef, int, void*) { return (Do(kCommand), 1); }, before, nullptr);
    }
    VYRACommandBegin(&command);
    VYRACommandButtonPress(300 + index);
    VYRAControlCamera(
        VYRA_CAMERA_UNTIL_VIEW_CHANGES, [](VYRACameraPosition*, int, void*) { return (Do(kCamera), 1); },
        nullptr);
  }

  // All that a host calls in a frame.
  static void Run() {
    VYRAEventHook(VYRA_EVENT_FLIGHT_LOOPS_0, nullptr, nullptr, 1, 0);
    VYRAEventHook(VYRA_EVENT_FLIGHT_LOOPS_1, nullptr, nullptr, 1, 0);
    VYRAEventHook(VYRA_EVENT_COMMAND_REPEAT, nullptr, nullptr, 1, 0);
    VYRAMouseClickHook(50, 50, 1);
    for (int step = 1; step <= 26; ++step) VYRADoDrawingHook(step, 0);
    VYRAMouseClickHook(50, 50, 0);
    VYRACursorHook(50, 50);
    VYRAScrollWheelHook(50, 50, 0, 1);
    VYRAKeyPressHook('a', 8, 'A');
    VYRAKeyPressHook('h', 8, 'H');
    for (const int before : {1, 0}) VYRACommandHook(&command, 1, 0, before);
    float camera[7] = {};
    VYRACameraHook(&camera[0], &camera[1], &camera[2], &camera[3], &camera[4], &camera[5], &camera[6]);
  }
};

TEST_F(Frame, TakesNoMemoryOnceItsFirstRunIsOver) {
  Run();  // scratch memory is taken once and kept
  gDone = {};
  const long before = gAllocations;
  for (int frame = 0; frame < 3; ++frame) Run();
  EXPECT_EQ(gAllocations - before, 0);
  for (int work = 0; work < kKinds; ++work) EXPECT_GT(gDone[static_cast<std::size_t>(work)], 0) << work;
}

TEST_F(Frame, RegistrationIsCountedSoTheCountIsReal) {
  const long before = gAllocations;
  VYRAShareData("test/another item with a name of some length", VYRA_TYPE_INT, nullptr, nullptr);
  EXPECT_GT(gAllocations - before, 0);
}

}  // namespace
