// The hooks for input and queries, from the host's side of the built library: what each answers without
// plugins, and that each reaches the subsystem that it is for, with the plugin as the caller.
#include "ModuleTest.h"
#include "VYRACamera.h"
#include "VYRADisplay.h"
#include "VYRAMenus.h"
#include "VYRAPlanes.h"
#include "VYRAUtilities.h"

namespace {

using Answers = std::vector<int>;

std::string gNoted;

// Notes a word with the plugin that runs; the callbacks below all do.
int Note(const std::string& word) {
  gNoted += std::to_string(VYRAGetMyID()) + ":" + word + " ";
  return 1;
}

class Hooks : public ModuleTest {
 protected:
  Hooks() {
    gNoted.clear();
    AddFolders(main, {"a"});
  }

  float position[7] = {};
  int AskCamera() {
    return VYRACameraHook(&position[0], &position[1], &position[2], &position[3], &position[4], &position[5],
                          &position[6]);
  }
  int state = 7;
  int command = 0;
};

TEST_F(Hooks, AnswerAsIfNobodyWereThereBeforeTheStartAndAfterTheShutdown) {
  On("a.start", [](Moment&) { VYRARegisterDrawCallback([](int, int, void*) { return 0; }, 5, 1, nullptr); });
  const auto ask = [this] {
    return Answers{VYRADoDrawingHook(2, 0),
                   VYRADoDrawingHook(20, 0),
                   VYRAMouseClickHook(1, 1, 1),
                   VYRAKeyPressHook('a', 0, 'A'),
                   VYRAScrollWheelHook(1, 1, 0, 1),
                   VYRACursorHook(1, 1),
                   AskCamera(),
                   VYRAMenuHook(3),
                   VYRACheckMenuHook(1, 0, &state),
                   VYRAMenuItemEnabled(1, 0),
                   VYRACommandHook(&command, 1, 0, 1),
                   VYRAGetNumberPlanesToHandle(20, 0)};
  };
  const Answers nobody = {1, 1, 1, 1, 1, 0, 1, 1, 1, 1, 1, 20};
  EXPECT_EQ(ask(), nobody);
  Start();
  EXPECT_EQ(VYRADoDrawingHook(2, 0), 0);
  VYRAShutdownPlugins();
  EXPECT_EQ(ask(), nobody);
  EXPECT_EQ(state, 7);
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
    const auto onHotKey = [](void*) { Note("hotkey"); };
    VYRARegisterHotKey(-2, 0, "", onHotKey, nullptr);
    const auto onCamera = [](VYRACameraPosition* view, int isLosingControl, void*) {
      if (isLosingControl == 0) view->zoom = 3;
      return Note(isLosingControl != 0 ? "loses" : "camera");
    };
    VYRAControlCamera(1, onCamera, nullptr);
  });
  Start();
  EXPECT_EQ(VYRAMouseClickHook(5, 5, 7), 0) << "any press is a press";
  VYRADoDrawingHook(20, 0);
  EXPECT_EQ(VYRAMouseClickHook(50, 50, 0), 0);
  EXPECT_EQ(VYRACursorHook(5, 5), 1);
  EXPECT_EQ(VYRAScrollWheelHook(5, 5, 0, 1), 0);
  EXPECT_EQ(VYRAKeyPressHook(0x141, 0, 0x1FE), 0) << "the low 8 bits count";
  EXPECT_EQ(AskCamera(), 0);
  EXPECT_EQ(position[6], 3);
  Event(VYRA_EVENT_VIEW_CHANGED);
  EXPECT_EQ(gNoted, "1:mouse1 1:mouse2 1:mouse3 1:cursor 1:wheel 1:hotkey 1:camera 1:loses ");
}

TEST_F(Hooks, MenusCommandsButtonsAndPlanesAnswerTheHost) {
  On("a.start", [this](Moment&) {
    gHost.Answer("CreateMenu", 6);
    const auto onPick = [](void*, void*) { Note("picked"); };
    const VYRAMenuID menu = VYRACreateMenu("Fuel", nullptr, 0, onPick, nullptr);
    gHost.Answer("AppendMenuItem", 71);
    VYRACheckMenuItem(menu, VYRAAppendMenuItem(menu, "Refuel", nullptr, 0), 2);
    gHost.Answer("AppendMenuItem", 72);
    VYRAEnableMenuItem(menu, VYRAAppendMenuItem(menu, "Drain", nullptr, 0), 0);
    const auto onCommand = [](VYRACommandRef, int phase, void*) {
      return Note("phase" + std::to_string(phase)) - 1;
    };
    VYRARegisterCommandHandler(&command, onCommand, 1, nullptr);
    VYRACommandBegin(&command);
    VYRACommandButtonPress(9);
    VYRAAcquirePlanes(nullptr, nullptr, nullptr);
    VYRASetAircraftModel(2, "Glider.acf");
    VYRASetActiveAircraftCount(3);
  });
  Start();
  EXPECT_EQ((Answers{VYRAMenuHook(71), VYRAMenuHook(99)}), (Answers{0, 1}));
  EXPECT_EQ((Answers{VYRACheckMenuHook(6, 2, &state), VYRACheckMenuHook(6, 0, &state)}), (Answers{1, 0}));
  EXPECT_EQ(state, 1);
  EXPECT_EQ((Answers{VYRAMenuItemEnabled(6, 0), VYRAMenuItemEnabled(6, 1)}), (Answers{1, 0}));
  EXPECT_EQ((Answers{VYRACommandHook(&command, 0, 1, 1), VYRACommandHook(&command, 1, 0, 0)}),
            (Answers{0, 1}));
  EXPECT_EQ(gNoted, "1:picked 1:phase2 ");
  gHost.calls.clear();
  Event(VYRA_EVENT_COMMAND_REPEAT);
  EXPECT_EQ(gHost.CallsOf("CommandRepeat").size(), 1u);
  Pass();
  EXPECT_EQ(gHost.CallsOf("CommandButtonPress").size(), 1u);
  char path[64] = "Other.acf";
  VYRAUpdatePlaneNameAndPath(2, nullptr, path);
  EXPECT_STREQ(path, "Glider.acf");
  EXPECT_EQ((Answers{VYRAGetNumberPlanesToHandle(20, 0), VYRAGetNumberPlanesToHandle(20, 1)}),
            (Answers{3, 20}));
  VYRAShutdownPlugins();
  EXPECT_EQ(gHost.CallsOf("CommandEnd").size(), 1u) << "what a plugin held is released when it leaves";
  EXPECT_EQ(VYRAGetNumberPlanesToHandle(20, 0), 20);
}

}  // namespace
