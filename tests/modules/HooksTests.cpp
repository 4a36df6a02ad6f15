// The hooks for input and queries, from the host's side of the built library: what each answers without
// plugins, and that each reaches the subsystem that it is for, with the plugin as the caller.
#include <cstring>

#include "ModuleTest.h"
#include "VYRACamera.h"
#include "VYRADisplay.h"
#include "VYRAMenus.h"
#include "VYRAPlanes.h"
#include "VYRAUtilities.h"

namespace {

std::string gNoted;

// Notes a word with the plugin that runs; the callbacks below all do.
int Note(const std::string& word) {
  gNoted += std::to_string(VYRAGetMyID()) + ":" + word + " ";
  return 1;
}

class Hooks : public ModuleTest {
 protected:
  Hooks() {
    AddFolders(main, {"a"});
    gNoted.clear();
  }
};

TEST_F(Hooks, AnswerAsIfNobodyWereThereBeforeTheStartAndAfterTheShutdown) {
  for (const bool started : {false, true}) {
    if (started) {
      On("a.start",
         [](Moment&) { VYRARegisterDrawCallback([](int, int, void*) { return 0; }, 5, 1, nullptr); });
      Start();
      EXPECT_EQ(VYRADoDrawingHook(2, 0), 0);
      VYRAShutdownPlugins();
    }
    float v = 1;
    int state = 7;
    EXPECT_EQ(VYRADoDrawingHook(2, 0), 1);
    EXPECT_EQ(VYRADoDrawingHook(20, 0), 1);
    EXPECT_EQ(VYRAMouseClickHook(1, 1, 1), 1);
    EXPECT_EQ(VYRAKeyPressHook('a', 0, 'A'), 1);
    EXPECT_EQ(VYRACursorHook(1, 1), 0);
    EXPECT_EQ(VYRAScrollWheelHook(1, 1, 0, 1), 1);
    EXPECT_EQ(VYRACameraHook(&v, &v, &v, &v, &v, &v, &v), 1);
    EXPECT_EQ(VYRAMenuHook(3), 1);
    EXPECT_EQ(VYRACheckMenuHook(1, 0, &state), 1);
    EXPECT_EQ(VYRAMenuItemEnabled(1, 0), 1);
    EXPECT_EQ(VYRAGetNumberPlanesToHandle(20, 0), 20);
    EXPECT_EQ(VYRACommandHook(&v, 1, 0, 1), 1);
    EXPECT_EQ(state, 7);
  }
}

TEST_F(Hooks, InputReachesWindowsHotKeysAndTheCamera) {
  On("a.start", [](Moment&) {
    VYRAWindowCreateParams params = {};
    params.structSize = sizeof(params);
    params.right = params.top = 10;
    params.visible = 1;
    params.handleMouseClick = [](VYRAWindowID, int, int, int status, void*) {
      return Note("mouse" + std::to_string(status));
    };
    params.handleCursor = [](VYRAWindowID, int, int, void*) { return Note("cursor"); };
    params.handleMouseWheel = [](VYRAWindowID, int, int, int, int, void*) { return Note("wheel"); };
    VYRACreateWindowEx(&params);
    VYRARegisterHotKey(
        -2, 0, "", [](void*) { Note("hotkey"); }, nullptr);
    VYRAControlCamera(
        1,
        [](VYRACameraPosition* position, int isLosingControl, void*) {
          if (isLosingControl != 0) return Note("loses");
          position->zoom = 3;
          return Note("camera");
        },
        nullptr);
  });
  Start();
  EXPECT_EQ(VYRAMouseClickHook(5, 5, 7), 0) << "any press is a press";
  VYRADoDrawingHook(20, 0);
  EXPECT_EQ(VYRAMouseClickHook(50, 50, 0), 0);
  EXPECT_EQ(VYRACursorHook(5, 5), 1);
  EXPECT_EQ(VYRAScrollWheelHook(5, 5, 0, 1), 0);
  EXPECT_EQ(VYRAKeyPressHook(0x141, 0, 0x1FE), 0) << "the low 8 bits count";
  float position[7] = {};
  EXPECT_EQ(VYRACameraHook(&position[0], &position[1], &position[2], &position[3], &position[4], &position[5],
                           &position[6]),
            0);
  EXPECT_EQ(position[6], 3);
  Event(VYRA_EVENT_VIEW_CHANGED);
  EXPECT_EQ(gNoted, "1:mouse1 1:mouse2 1:mouse3 1:cursor 1:wheel 1:hotkey 1:camera 1:loses ");
}

TEST_F(Hooks, MenusCommandsButtonsAndPlanesAnswerTheHost) {
  static int command = 0;
  On("a.start", [](Moment&) {
    gHost.Answer("CreateMenu", 6);
    const VYRAMenuID menu = VYRACreateMenu(
        "Fuel", nullptr, 0, [](void*, void*) { Note("picked"); }, nullptr);
    gHost.Answer("AppendMenuItem", 71);
    const int item = VYRAAppendMenuItem(menu, "Refuel", nullptr, 0);
    VYRACheckMenuItem(menu, item, 2);
    gHost.Answer("AppendMenuItem", 72);
    VYRAEnableMenuItem(menu, VYRAAppendMenuItem(menu, "Drain", nullptr, 0), 0);
    VYRARegisterCommandHandler(
        &command, [](VYRACommandRef, int phase, void*) { return Note("phase" + std::to_string(phase)) - 1; },
        1, nullptr);
    VYRACommandBegin(&command);
    VYRACommandButtonPress(9);
    VYRAAcquirePlanes(nullptr, nullptr, nullptr);
    VYRASetAircraftModel(2, "Glider.acf");
    VYRASetActiveAircraftCount(3);
  });
  Start();
  EXPECT_EQ(VYRAMenuHook(71), 0);
  EXPECT_EQ(VYRAMenuHook(99), 1);
  int state = 7;
  EXPECT_EQ(VYRACheckMenuHook(6, 0, &state), 0);
  EXPECT_EQ(state, 1);
  EXPECT_EQ(VYRACheckMenuHook(6, 2, &state), 1);
  EXPECT_EQ(VYRAMenuItemEnabled(6, 0), 1);
  EXPECT_EQ(VYRAMenuItemEnabled(6, 1), 0);
  EXPECT_EQ(VYRAMenuHook(72), 0) << "it cannot be picked, but it is a plugin's";
  EXPECT_EQ(VYRACommandHook(&command, 0, 1, 1), 0);
  EXPECT_EQ(VYRACommandHook(&command, 1, 0, 0), 1);
  gHost.calls.clear();
  Event(VYRA_EVENT_COMMAND_REPEAT);
  EXPECT_EQ(gHost.CallsOf("CommandRepeat").size(), 1u);
  Pass();
  EXPECT_EQ(gHost.CallsOf("CommandButtonPress").size(), 1u);
  EXPECT_EQ(VYRAGetNumberPlanesToHandle(20, 0), 3);
  EXPECT_EQ(VYRAGetNumberPlanesToHandle(20, 1), 20);
  char path[64] = "Other.acf";
  VYRAUpdatePlaneNameAndPath(1, nullptr, path);
  EXPECT_STREQ(path, "Other.acf");
  VYRAUpdatePlaneNameAndPath(2, nullptr, path);
  EXPECT_STREQ(path, "Glider.acf");
  EXPECT_EQ(gNoted, "1:picked 1:phase2 ");

  VYRAShutdownPlugins();
  EXPECT_EQ(gHost.CallsOf("CommandEnd").size(), 1u) << "what a plugin held is released when it leaves";
  EXPECT_EQ(VYRAGetNumberPlanesToHandle(20, 0), 20);
}

}  // namespace
