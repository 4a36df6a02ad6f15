// Windows: their order, the mouse, keyboard focus, and everything a window may do to itself while it is
// called.
#include <array>
#include <string>

#include "PluginFixture.h"
#include "VYRADisplayInternal.h"
#include "VYRAHost.h"
#include "VYRAHostServices.h"
#include "VYRALoaderLifecycle.h"
#include "VYRAWatch.h"

namespace {

class Windows : public PluginFixture {
 protected:
  // A window that notes what it is called for, as "name:what", answers its result and does its action.
  struct Pane {
    char name;
    int result = 1;
    void (*action)(Pane& self, const std::string& what) = nullptr;
    VYRAWindowID id = nullptr;
  };

  static int Called(void* refcon, const std::string& what) {
    Pane& pane = *static_cast<Pane*>(refcon);
    trace.push_back(pane.name + (":" + what));
    const int result = pane.result;
    if (pane.action != nullptr) pane.action(pane, what);
    return result;
  }

  static void Open(Pane& pane, int left = 0, int bottom = 0, int visible = 1) {
    const VYRAWindowCreateParams params = {
        sizeof(params),
        left,
        bottom + 10,
        left + 10,
        bottom,
        visible,
        [](VYRAWindowID, void* r) { Called(r, "draw"); },
        [](VYRAWindowID, int, int, int status, void* r) {
          return Called(r, "mouse" + std::to_string(status));
        },
        [](VYRAWindowID w, char key, int, char, void* r, int losing) {
          const bool self = w == static_cast<Pane*>(r)->id;
          Called(r, losing == 0 ? std::string("key ") + key
                    : self      ? "loses to itself"
                    : w         ? "loses"
                                : "losesAll");
        },
        [](VYRAWindowID, int, int, void* r) { return Called(r, "cursor"); },
        [](VYRAWindowID, int, int, int, int clicks, void* r) {
          return Called(r, "wheel" + std::to_string(clicks));
        },
        &pane};
    pane.id = VYRACreateWindowEx(&params);
  }

  static std::string Traced() {
    std::string line;
    for (const std::string& word : std::exchange(trace, {})) line += word + " ";
    return line;
  }

  Pane a{'a'};
  Pane b{'b'};
  Pane c{'c'};
};

TEST_F(Windows, PointIsInsideOnTheLeftAndBottomEdgeAlone) {
  Open(a, 100, 200);
  const auto hits = [](std::initializer_list<std::pair<int, int>> points) {
    std::vector<int> cursors;
    for (const auto& [x, y] : points) cursors.push_back(VYRADisplayCursorHook(x, y));
    return cursors;
  };
  EXPECT_EQ(hits({{100, 200}, {109, 209}}), (std::vector{1, 1}));
  EXPECT_EQ(hits({{99, 200}, {100, 199}, {110, 205}, {105, 210}}), (std::vector{0, 0, 0, 0}));
}

TEST_F(Windows, OrderDecidesWhoIsDrawnLastAndAskedFirst) {
  for (Pane* pane : {&a, &b, &c}) Open(*pane);
  b.result = 0;
  VYRABringWindowToFront(b.id);
  VYRADisplayDoDrawingHook(20, 0);
  EXPECT_EQ(Traced(), "a:draw c:draw b:draw ");
  EXPECT_EQ(VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN), 0);
  EXPECT_EQ(VYRADisplayScrollWheelHook(5, 5, 0, -2), 0);
  EXPECT_EQ(Traced(), "b:mouse1 c:mouse1 b:wheel-2 c:wheel-2 ");
  VYRASetWindowIsVisible(c.id, 0);
  EXPECT_EQ(VYRADisplayCursorHook(5, 5), 1);
  EXPECT_EQ(Traced(), "b:cursor a:cursor ");
  EXPECT_EQ(VYRADisplayScrollWheelHook(50, 5, 0, 1), 1);
  EXPECT_EQ(VYRAIsWindowInFront(b.id), 1);
  VYRASetWindowIsVisible(b.id, 0);
  EXPECT_EQ(VYRAIsWindowInFront(b.id), 0);
  EXPECT_EQ(VYRAIsWindowInFront(a.id), 1);
}

TEST_F(Windows, PressThatIsTakenHoldsTheMouseUntilTheRelease) {
  Open(a);
  EXPECT_EQ(VYRADisplayMouseClickHook(50, 50, VYRA_MOUSE_DOWN), 1);
  VYRADisplayDoDrawingHook(20, 0);
  EXPECT_EQ(Traced(), "a:draw ");
  VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN);
  VYRADisplayDoDrawingHook(20, 0);
  EXPECT_EQ(gHost.CallsOf("GetMouseLocation").size(), 1U);
  EXPECT_EQ(VYRADisplayMouseClickHook(500, 500, VYRA_MOUSE_UP), 0);
  EXPECT_EQ(VYRADisplayMouseClickHook(500, 500, VYRA_MOUSE_UP), 1);
  EXPECT_EQ(Traced(), "a:mouse1 a:mouse2 a:draw a:mouse3 ");
}

TEST_F(Windows, FocusMovesAndTellsTheLoserWhoTakesIt) {
  Open(a);
  Open(b);
  VYRATakeKeyboardFocus(a.id);
  VYRATakeKeyboardFocus(a.id);
  EXPECT_EQ(Traced(), "");
  VYRATakeKeyboardFocus(b.id);
  EXPECT_EQ(VYRADisplayKeyPressHook('k', 0, 'K'), 0);
  VYRATakeKeyboardFocus(reinterpret_cast<VYRAWindowID>(&a));
  EXPECT_EQ(gFocusWindow, nullptr) << "what is no window releases the focus";
  EXPECT_EQ(Traced(), "a:loses b:key k b:loses ");
  VYRATakeKeyboardFocus(a.id);
  VYRASetWindowIsVisible(a.id, 0);
  VYRASetWindowIsVisible(a.id, 0);
  VYRATakeKeyboardFocus(a.id);
  VYRADestroyWindow(a.id);
  EXPECT_EQ(Traced(), "a:losesAll a:losesAll ");
  EXPECT_EQ(gFocusWindow, nullptr);
}

TEST_F(Windows, DisabledPluginLosesFocusAndMouseWhileItMayStillBeCalled) {
  const VYRAPluginID plugin = AddPlugin("p");
  RunAs(plugin, [&] { Open(a); });
  VYRATakeKeyboardFocus(a.id);
  VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN);
  VYRADisablePlugin(plugin);
  EXPECT_EQ(Traced(), "a:mouse1 a:losesAll a:mouse3 ");
  EXPECT_EQ(gDragWindow, nullptr);
  VYRATakeKeyboardFocus(a.id);
  EXPECT_EQ(gFocusWindow, nullptr);
  VYRADisplayDoDrawingHook(20, 0);
  EXPECT_EQ(VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN), 1);
  EXPECT_EQ(Traced(), "");
}

TEST_F(Windows, WindowMayDestroyItselfInEveryCallOfItsOwn) {
  const auto destroySelf = [](Pane& self, const std::string&) {
    VYRADestroyWindow(self.id);
    EXPECT_EQ(VYRAGetWindowIsVisible(self.id), 0) << "the handle is stale at once";
    VYRABringWindowToFront(self.id);
    VYRADestroyWindow(self.id);
  };
  const auto during = [&](void (*prepare)(Pane&), void (*call)()) {
    a.action = nullptr;
    Open(a);
    Open(b);
    prepare(a);
    Traced();
    a.action = destroySelf;
    VYRABringWindowToFront(a.id);
    call();
    EXPECT_EQ(gDragWindow, nullptr);
    EXPECT_EQ(gFocusWindow, nullptr);
    VYRADestroyWindow(b.id);
    EXPECT_EQ(gWindows.BeginIterate(), nullptr);
    gWindows.EndIterate();
    return Traced();
  };
  const auto nothing = [](Pane&) {};
  const auto hold = [](Pane&) { VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN); };
  const auto focus = [](Pane& pane) { VYRATakeKeyboardFocus(pane.id); };
  b.result = 0;
  EXPECT_EQ(during(nothing, [] { VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN); }), "a:mouse1 ");
  EXPECT_EQ(during(nothing, [] { VYRADisplayCursorHook(5, 5); }), "a:cursor ");
  EXPECT_EQ(during(nothing, [] { VYRADisplayDoDrawingHook(20, 0); }), "b:draw a:draw ");
  EXPECT_EQ(during(focus, [] { VYRADisplayKeyPressHook('k', 0, 'K'); }), "a:key k a:losesAll ");
  EXPECT_EQ(during(focus, [] { VYRATakeKeyboardFocus(nullptr); }), "a:losesAll ");
  EXPECT_EQ(during(hold, [] { VYRADisplayDoDrawingHook(20, 0); }), "a:mouse2 b:draw ");
  EXPECT_EQ(during(hold, [] { VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_UP); }), "a:mouse3 ");
}

TEST_F(Windows, WindowMayDestroyOrReorderTheOthersWhileTheyAreWalked) {
  static Pane* others[2];
  others[0] = &a;
  others[1] = &c;
  for (Pane* pane : {&a, &b, &c}) Open(*pane);
  b.action = [](Pane& self, const std::string& what) {
    if (what == "draw") VYRABringWindowToFront(self.id);
    if (what == "mouse1") {
      for (const Pane* other : others) VYRADestroyWindow(other->id);
    }
  };
  VYRADisplayDoDrawingHook(20, 0);
  EXPECT_EQ(Traced(), "a:draw b:draw c:draw ") << "moved to the front, but drawn once";
  b.result = 0;
  EXPECT_EQ(VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN), 1);
  EXPECT_EQ(Traced(), "b:mouse1 ");
}

TEST_F(Windows, LoserThatMovesTheFocusItselfIsToldOnce) {
  Open(a);
  Open(b);
  a.action = [](Pane& self, const std::string&) {
    VYRATakeKeyboardFocus(self.id);
    VYRATakeKeyboardFocus(nullptr);
  };
  VYRATakeKeyboardFocus(a.id);
  VYRATakeKeyboardFocus(b.id);
  EXPECT_EQ(Traced(), "a:loses ");
  EXPECT_EQ(gFocusWindow, b.id);
}

TEST_F(Windows, LosersThatPassTheFocusToAndFroAreToldOnceEach) {
  static std::array<Pane*, 2> pair;
  pair = {&a, &b};
  for (Pane* pane : pair) {
    Open(*pane);
    pane->action = [](Pane& self, const std::string&) {
      ASSERT_LT(trace.size(), 10U) << "they would never end";
      const Pane* other = pair[0] == &self ? pair[1] : pair[0];
      for (const VYRAWindowID taker : {other->id, self.id, VYRAWindowID{}}) VYRATakeKeyboardFocus(taker);
    };
  }
  VYRATakeKeyboardFocus(a.id);
  VYRATakeKeyboardFocus(nullptr);
  EXPECT_EQ(Traced(), "a:losesAll b:loses ");
  EXPECT_EQ(gFocusWindow, nullptr);
}

TEST_F(Windows, LoserIsKnownByItselfAndNotByItsAddress) {
  static Pane* next;
  next = &b;
  Open(a);
  a.action = [](Pane& self, const std::string&) {
    VYRADestroyWindow(self.id);
    EXPECT_EQ(VYRAGetWindowRefCon(self.id), nullptr);
    Open(*next);  // where memory is reused at once, it has the address of the one that is gone
    VYRATakeKeyboardFocus(next->id);
    VYRATakeKeyboardFocus(nullptr);
  };
  VYRATakeKeyboardFocus(a.id);
  VYRATakeKeyboardFocus(nullptr);
  EXPECT_EQ(Traced(), "a:losesAll b:losesAll ");
}

TEST_F(Windows, TakerThatIsDestroyedOrDisabledWhileTheLoserIsToldGetsNothing) {
  static Pane* taker;
  taker = &b;
  const VYRAPluginID plugin = AddPlugin("p");
  Open(a);
  RunAs(plugin, [&] { Open(b); });
  for (const auto action : {+[](Pane&, const std::string&) { VYRADisablePlugin(1); },
                            +[](Pane&, const std::string&) { VYRADestroyWindow(taker->id); }}) {
    a.action = action;
    VYRATakeKeyboardFocus(a.id);
    VYRATakeKeyboardFocus(b.id);
    EXPECT_EQ(gFocusWindow, nullptr);
    VYRAEnablePlugin(plugin);
  }
}

TEST_F(Windows, WindowOfAPluginThatIsDisabledInThePressTakesItButDoesNotHoldTheMouse) {
  const VYRAPluginID plugin = AddPlugin("p");
  RunAs(plugin, [&] { Open(a); });
  a.action = [](Pane&, const std::string&) { VYRADisablePlugin(VYRAGetMyID()); };
  EXPECT_EQ(VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN), 0);
  EXPECT_EQ(gDragWindow, nullptr);
}

TEST_F(Windows, WhatChangesAfterACallbackChangesWhenItThrowsToo) {
  const auto throws = [](Pane&, const std::string&) { throw 1; };
  const auto giveAFocus = [&] {
    a.action = nullptr;
    VYRATakeKeyboardFocus(a.id);
    a.action = throws;
  };
  Open(a);
  Open(b);
  giveAFocus();
  EXPECT_THROW(VYRATakeKeyboardFocus(b.id), int);
  EXPECT_EQ(gFocusWindow, b.id);
  giveAFocus();
  EXPECT_THROW(VYRASetWindowIsVisible(a.id, 0), int);
  EXPECT_EQ(std::pair(gFocusWindow, VYRAGetWindowIsVisible(a.id)), std::pair(VYRAWindowID{}, 0));
  giveAFocus();
  EXPECT_THROW(VYRADestroyWindow(a.id), int);
  EXPECT_EQ(gFocusWindow, nullptr);
  EXPECT_EQ(VYRAGetWindowRefCon(a.id), nullptr) << "it is gone";

  VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN);
  b.action = throws;
  EXPECT_THROW(VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_UP), int);
  EXPECT_EQ(gDragWindow, nullptr);
}

TEST_F(Windows, PluginThatThrowsInEachOfItsLastCallsGetsThemAllAndIsDisabled) {
  const VYRAPluginID plugin = AddPlugin("p");
  RunAs(plugin, [&] { Open(a); });
  VYRATakeKeyboardFocus(a.id);
  VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN);
  a.action = [](Pane&, const std::string&) { throw 1; };
  EXPECT_THROW(VYRADisablePlugin(plugin), int);
  EXPECT_EQ(Traced(), "a:mouse1 a:losesAll a:mouse3 ");
  EXPECT_EQ(VYRAIsPluginEnabled(plugin), 0);
}

TEST_F(Windows, HostThatThrowsWhenAskedForTheMouseDoesNotKeepItThere) {
  const VYRAPluginID plugin = AddPlugin("p");
  RunAs(plugin, [&] { Open(a); });
  VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN);
  gHost.services.GetMouseLocation = [](int*, int*, int) { throw 1; };
  EXPECT_THROW(VYRADisablePlugin(plugin), int);
  EXPECT_EQ(VYRAIsPluginEnabled(plugin), 0);
  EXPECT_EQ(gDragWindow, nullptr);
}

TEST_F(Windows, WindowOfTheHostHoldsTheMouseBeforeTheStart) {
  VYRARegistryClear();
  gHooks = nullptr;
  Open(a);
  VYRAMouseClickHook(5, 5, 1);
  VYRADoDrawingHook(20, 0);
  VYRAMouseClickHook(50, 50, 0);
  EXPECT_EQ(Traced(), "a:mouse1 a:draw a:mouse3 ");
}

TEST_F(Windows, MouseThatChangedHandsWhileTheHostWasAskedForItStaysThere) {
  const VYRAPluginID plugin = AddPlugin("p");
  Open(b, 50);
  RunAs(plugin, [&] { Open(a); });
  VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN);
  gHost.services.GetMouseLocation = [](int*, int*, int) {
    VYRAMouseClickHook(5, 5, 0);
    VYRAMouseClickHook(55, 5, 1);
  };
  VYRADisablePlugin(plugin);
  EXPECT_EQ(Traced(), "a:mouse1 a:mouse3 b:mouse1 ");
  EXPECT_EQ(gDragWindow, b.id);
}

TEST_F(Windows, WindowsThatAreCreatedWhileTheyAreDrawnWaitForTheNextFrame) {
  static std::vector<Pane> created;
  created.reserve(100);
  a.action = [](Pane& self, const std::string&) {
    ASSERT_LT(created.size(), created.capacity()) << "the frame would never end";
    Open(created.emplace_back(Pane{static_cast<char>(self.name + 1), 1, self.action}));
  };
  Open(a);
  VYRADisplayDrawWindows();
  EXPECT_EQ(Traced(), "a:draw ");
  a.action = nullptr;
  VYRADisplayDrawWindows();
  EXPECT_EQ(Traced(), "a:draw b:draw ");
  EXPECT_EQ(created.size(), 2U);
}

TEST_F(Windows, WindowsHiddenByTheAnchorLeaveNothingBehindWhenTheirPluginGoes) {
  const VYRAPluginID plugin = AddPlugin("p");
  RunAs(plugin, [&] {
    for (Pane* pane : {&b, &a}) Open(*pane);
  });
  VYRATakeKeyboardFocus(a.id);
  VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN);
  VYRADisplayDrawWindows();
  RunAs(plugin, [&] { Open(c); });
  Traced();
  VYRADisplayDrawWindows();
  EXPECT_EQ(Traced(), "b:draw c:draw ") << "a is hidden: it was created between two walks";
  EXPECT_EQ(VYRAGetWindowIsVisible(a.id), 0);
  UnloadOnePlugin(plugin);
  EXPECT_EQ(gFocusWindow, nullptr);
  EXPECT_EQ(gDragWindow, nullptr);
  Traced();
  VYRADisplayKeyPressHook('k', 0, 'K');
  VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_UP);
  EXPECT_EQ(Traced(), "");
}

TEST_F(Windows, WalkAmongHiddenWindowsDoesNotMeetThoseOfAPluginThatWent) {
  static Pane* added;
  added = &c;
  const VYRAPluginID plugin = AddPlugin("p");
  Open(b);
  Pane between{'m'};
  Open(between);
  RunAs(plugin, [&] { Open(a); });
  between.action = [](Pane&, const std::string&) {
    Open(*added);  // hides all but the back-most, b
    UnloadOnePlugin(1);
    VYRALoaderGiveBackID(1);
    AddPlugin("the next of that ID");
  };
  VYRADisplayDrawWindows();
  EXPECT_EQ(Traced(), "b:draw m:draw ") << "a's code may be unmapped";
}

TEST_F(Windows, ParametersOfAnotherSizeAreRefused) {
  VYRAWindowCreateParams params = {};
  for (const int size : {0, 71, 73}) {
    params.structSize = size;
    EXPECT_EQ(VYRACreateWindowEx(&params), nullptr);
  }
  EXPECT_EQ(VYRACreateWindowEx(nullptr), nullptr);
}

TEST_F(Windows, WindowNeedsNoCallbacks) {
  const VYRAWindowID bare = VYRACreateWindow(0, 10, 10, 0, 1, nullptr, nullptr, nullptr, &a);
  EXPECT_EQ(VYRADisplayMouseClickHook(5, 5, VYRA_MOUSE_DOWN), 1);
  EXPECT_EQ(VYRADisplayDoDrawingHook(20, 0), 1);
  EXPECT_EQ(VYRADisplayCursorHook(5, 5), 0);
  VYRATakeKeyboardFocus(bare);
  EXPECT_EQ(VYRADisplayKeyPressHook('k', 0, 'K'), 0);
  VYRATakeKeyboardFocus(nullptr);
  EXPECT_EQ(gFocusWindow, nullptr);
}

TEST_F(Windows, HostSeesThemFrontToBackWithWhoHasFocusAndMouse) {
  const VYRAPluginID plugin = AddPlugin("p");
  Open(a, 1, 2);
  RunAs(plugin, [&] { Open(b, 30, 40); });
  Open(c, 0, 0, 0);
  VYRATakeKeyboardFocus(a.id);
  VYRADisplayMouseClickHook(35, 45, VYRA_MOUSE_DOWN);

  std::array<VYRAWindowInfo, 2> infos{};
  ASSERT_EQ(VYRAGetWindows(infos.data(), 2), 3) << "one has no room, and is counted";
  EXPECT_EQ(infos[0].window, c.id);
  EXPECT_EQ(infos[0].isShown, 0);
  EXPECT_EQ(infos[1].window, b.id);
  EXPECT_EQ(infos[1].plugin, plugin);
  EXPECT_EQ((std::array{infos[1].left, infos[1].top, infos[1].right, infos[1].bottom}),
            (std::array{30, 50, 40, 40}));
  EXPECT_EQ((std::array{infos[1].isShown, infos[1].hasKeyboardFocus, infos[1].holdsMouse}),
            (std::array{1, 0, 1}));

  VYRADestroyWindow(c.id);
  VYRADisablePlugin(plugin);
  ASSERT_EQ(VYRAGetWindows(infos.data(), 2), 2);
  EXPECT_EQ((std::array{infos[0].isShown, infos[0].holdsMouse}), (std::array{0, 0}));
  EXPECT_EQ((std::array{infos[1].isShown, infos[1].hasKeyboardFocus}), (std::array{1, 1}));
  EXPECT_EQ(VYRAGetWindows(nullptr, 0), 2);
}

TEST_F(Windows, HostKnowsWhichWindowIsDrawnAlsoAfterOneThrew) {
  static std::vector<VYRAWindowID> drawn;
  drawn.clear();
  const auto note = [](Pane&, const std::string&) { drawn.push_back(VYRAGetDrawnWindow()); };
  a.action = note;
  b.action = [](Pane& self, const std::string& what) {
    drawn.push_back(VYRAGetDrawnWindow());
    if (what == "draw" && drawn.size() > 2) throw self.name;
  };
  Open(a);
  Open(b);
  VYRADisplayDrawWindows();
  EXPECT_EQ(drawn, (std::vector{a.id, b.id}));
  EXPECT_EQ(VYRAGetDrawnWindow(), nullptr);
  EXPECT_THROW(VYRADisplayDrawWindows(), char);
  EXPECT_EQ(VYRAGetDrawnWindow(), nullptr);
}

TEST_F(Windows, GeometryAndRefconAreKeptAsGiven) {
  Open(a);
  VYRASetWindowGeometry(a.id, 1, 2, 3, 4);
  std::array<int, 4> edges = {};
  VYRAGetWindowGeometry(a.id, &edges[0], &edges[1], &edges[2], &edges[3]);
  EXPECT_EQ(edges, (std::array{1, 2, 3, 4}));
  VYRAGetWindowGeometry(a.id, nullptr, nullptr, nullptr, nullptr);
  VYRASetWindowRefCon(a.id, &b);
  EXPECT_EQ(VYRAGetWindowRefCon(a.id), &b);
}

}  // namespace
